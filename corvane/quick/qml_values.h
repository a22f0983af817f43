/// The framework's values as those of QML, and back.
#pragma once

#include <QJSValue>
#include <QVariant>
#include <optional>

#include "corvane/agent_view/region.h"
#include "corvane/bridge/agent_error.h"
#include "corvane/bridge/agent_event.h"
#include "corvane/declarative/velnor_agent.h"
#include "corvane/minimized/minimized_origin.h"
#include "corvane/product/product.h"

namespace corvane::quick {

/// An object with the `name` of the event and its values, such as {name: "callStatusUpdate", status: "..."}.
[[nodiscard]] QVariantMap toVariant(const AgentEvent& event);
/// An object with the `name` of the error and its `description`.
[[nodiscard]] QVariantMap toVariant(const AgentError& error);
/// An object with `region`, `organisationId`, `connectId` and `enableSSO`, as the item's own properties.
[[nodiscard]] QVariantMap toVariant(const VelnorAgent& agent);

/// "eu", "global", or else the address of a shop's own deployment.
[[nodiscard]] Region regionOf(const QString& text);
[[nodiscard]] QString textOf(const Region& region);

/// A product from an object of the JSON form, or from its text. Throws `InvalidDataError`.
[[nodiscard]] Product productOf(const QJSValue& value);

}  // namespace corvane::quick
