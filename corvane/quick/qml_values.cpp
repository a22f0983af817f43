#include "corvane/quick/qml_values.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <string>

namespace corvane::quick {

QVariantMap toVariant(const AgentEvent& event) {
  const std::string json = encodeJson(event);
  const QJsonObject cases =
      QJsonDocument::fromJson(QByteArray(json.data(), static_cast<qsizetype>(json.size()))).object();
  const auto found = cases.begin();
  QVariantMap values = found.value().toObject().toVariantMap();
  values.insert(QStringLiteral("name"), found.key());
  return values;
}

QVariantMap toVariant(const AgentError& error) {
  const QString name = error.match([](const AgentError::AgentToolError&) { return QStringLiteral("agentToolError"); },
                                   [](const AgentError::EncodingError&) { return QStringLiteral("encodingError"); },
                                   [](const AgentError::NoActiveCall&) { return QStringLiteral("noActiveCall"); },
                                   [](const AgentError::RequestTimeout&) { return QStringLiteral("requestTimeout"); },
                                   [](const AgentError::SkuNotFound&) { return QStringLiteral("skuNotFound"); });
  return {{QStringLiteral("name"), name}, {QStringLiteral("description"), QString::fromUtf8(error.what())}};
}

QVariantMap toVariant(const VelnorAgent& agent) {
  return {{QStringLiteral("region"), textOf(agent.region())},
          {QStringLiteral("organisationId"), QString::fromStdString(agent.organisationId())},
          {QStringLiteral("connectId"), QString::fromStdString(agent.connectId())},
          {QStringLiteral("enableSSO"), agent.enableSSO()}};
}

Region regionOf(const QString& text) {
  if (text == QStringLiteral("eu")) return Region::eu();
  if (text == QStringLiteral("global")) return Region::global();
  return Region::custom(text.toStdString());
}

QString textOf(const Region& region) {
  return region.match([](const Region::Custom& custom) { return QString::fromStdString(custom.url); },
                      [](const Region::Eu&) { return QStringLiteral("eu"); },
                      [](const Region::Global&) { return QStringLiteral("global"); });
}

Product productOf(const QJSValue& value) {
  const QByteArray json = value.isString()
                              ? value.toString().toUtf8()
                              : QJsonDocument::fromVariant(value.toVariant()).toJson(QJsonDocument::Compact);
  return decodeJson<Product>(std::string_view(json.data(), static_cast<std::size_t>(json.size())));
}

}  // namespace corvane::quick
