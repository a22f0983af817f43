/// Texts between us and the toolkit.
#pragma once

#include <QByteArray>
#include <QString>
#include <string>
#include <string_view>

namespace corvane::qt {

inline QString toQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string toText(const QByteArray& utf8) { return {utf8.constData(), static_cast<std::size_t>(utf8.size())}; }

inline std::string toText(const QString& text) { return toText(text.toUtf8()); }

}  // namespace corvane::qt
