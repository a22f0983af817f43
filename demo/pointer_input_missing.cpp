// Stands in where the library was not there that lets a program move the mouse.
#include "demo/pointer_input.h"

namespace corvane::demo {

struct PointerInput::Connection {};

std::unique_ptr<PointerInput> PointerInput::open(GtkWidget* /*widget*/, std::string& reason) {
  reason = "This was built without libXtst";
  return nullptr;
}

PointerInput::~PointerInput() = default;

void PointerInput::move(CGPoint /*to*/) {}
void PointerInput::moveBy(CGPoint /*way*/) {}
void PointerInput::press(int /*button*/) {}
void PointerInput::release(int /*button*/) {}
void PointerInput::click(CGPoint /*at*/) {}
void PointerInput::moveInSteps(CGPoint /*to*/, int /*steps*/) {}

}  // namespace corvane::demo
