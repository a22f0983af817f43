#include "tools/finding_writer.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "corvane/platform/foundation/json_writer.h"
#include "corvane/platform/foundation/utf8.h"
#include "tools/printable_text.h"

namespace corvane::tools {

namespace {

std::string_view nameOf(Severity severity) {
  switch (severity) {
    case Severity::error:
      return "error";
    case Severity::warning:
      return "warning";
  }
  std::unreachable();
}

std::string_view nameOf(FindingKind kind) {
  switch (kind) {
    case FindingKind::syntax:
      return "syntax";
    case FindingKind::refused:
      return "refused";
    case FindingKind::dropped:
      return "dropped";
    case FindingKind::unreadable:
      return "unreadable";
  }
  std::unreachable();
}

std::string coloured(std::string_view text, std::string_view code, Colours colours) {
  if (colours == Colours::none) return std::string(text);
  return "\033[" + std::string(code) + "m" + std::string(text) + "\033[0m";
}

/// What can be written as JSON, which a file's name need not be.
std::string asUtf8(const std::string& text) { return isValidUtf8(text) ? text : printable(text); }

}  // namespace

Colours wantedColours() {
  const char* const refusal = std::getenv("NO_COLOR");
  const char* const terminal = std::getenv("TERM");
  const bool isRefused = refusal != nullptr && *refusal != '\0';
  const bool hasColours = terminal != nullptr && std::string_view(terminal) != "dumb";
  return ::isatty(STDERR_FILENO) == 1 && hasColours && !isRefused ? Colours::terminal : Colours::none;
}

std::string textLine(const std::string& file, const Finding& finding, Colours colours) {
  std::string place = printable(file);
  if (finding.kind != FindingKind::unreadable) {
    place += ':' + std::to_string(finding.position.line) + ':' + std::to_string(finding.position.column);
  }
  constexpr std::string_view bold = "1";
  constexpr std::string_view boldRed = "1;31";
  constexpr std::string_view boldMagenta = "1;35";
  std::string line = coloured(place + ':', bold, colours) + ' ' +
                     coloured(std::string(nameOf(finding.severity)) + ':',
                              finding.severity == Severity::error ? boldRed : boldMagenta, colours) +
                     ' ';
  if (!finding.path.empty()) line += printable(finding.path) + ": ";
  line += printable(finding.message);
  if (finding.skippedBytes > 0)
    line += "; " + std::to_string(finding.skippedBytes) + " bytes from here on are not read";
  if (finding.kind == FindingKind::unreadable) return line;
  line += " (";
  if (finding.product > 0) line += "product " + std::to_string(finding.product) + ", ";
  return line + "byte " + std::to_string(finding.position.byte) + ')';
}

std::string jsonLine(const std::string& file, const Finding& finding) {
  JsonWriter writer;
  const auto addText = [&](std::string_view key, std::string_view text) {
    writer.key(key);
    writer.text(text);
  };
  const auto addNumber = [&](std::string_view key, std::size_t number) {
    writer.key(key);
    writer.integer(static_cast<std::int64_t>(number));
  };
  writer.beginObject();
  addText("file", asUtf8(file));
  addText("severity", nameOf(finding.severity));
  addText("kind", nameOf(finding.kind));
  addText("message", asUtf8(finding.message));
  if (finding.kind != FindingKind::unreadable) {
    addNumber("line", finding.position.line);
    addNumber("column", finding.position.column);
    addNumber("byte", finding.position.byte);
  }
  if (finding.product > 0) addNumber("product", finding.product);
  if (!finding.path.empty()) addText("path", asUtf8(finding.path));
  if (finding.skippedBytes > 0) addNumber("skippedBytes", finding.skippedBytes);
  writer.endObject();
  return writer.take();
}

}  // namespace corvane::tools
