/// The messages that a simulated page posts, as JSON texts.
#pragma once

#include <concepts>
#include <string>

#include "corvane/bridge/web_agent_event_type.h"
#include "corvane/platform/foundation/json_coder.h"
#include "corvane/platform/foundation/json_writer.h"

namespace corvane::simulation {

/// An event whose data is what `writeData` writes. Throws `EncodingError` for text that is not valid UTF-8.
template <std::invocable<JsonWriter&> WriteData>
std::string pageMessage(WebAgentEventType type, WriteData writeData) {
  JsonWriter writer;
  writer.beginObject();
  json_detail::encodeMember("eventType", type, writer);
  writer.key("data");
  writeData(writer);
  writer.endObject();
  return writer.take();
}

/// The same with a record.
template <class Data>
  requires(!std::invocable<Data, JsonWriter&>)
std::string pageMessage(WebAgentEventType type, const Data& data) {
  return pageMessage(type, [&](JsonWriter& writer) { JsonCoding<Data>::encode(data, writer); });
}

/// The same without data.
inline std::string pageMessage(WebAgentEventType type) {
  return pageMessage(type, [](JsonWriter& writer) {
    writer.beginObject();
    writer.endObject();
  });
}

}  // namespace corvane::simulation
