#include "benchmarks/soak/engine_objects.h"

#include <glib-object.h>

namespace corvane::soak {

void EngineObjects::watch(void* object) {
  ++*aliveCount_;
  g_object_set_data_full(static_cast<GObject*>(object), "corvane-soak-life", new std::shared_ptr<int>(aliveCount_),
                         [](gpointer data) {
                           const std::unique_ptr<std::shared_ptr<int>> count(static_cast<std::shared_ptr<int>*>(data));
                           --**count;
                         });
}

}  // namespace corvane::soak
