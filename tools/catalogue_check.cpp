#include "tools/catalogue_check.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>
#include <variant>

#include "tools/input_window.h"

namespace corvane::tools {

namespace {

std::string counted(std::size_t count, const char* noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

}  // namespace

CatalogueCheck::CatalogueCheck(const Options& options, CatalogueFiles files)
    : output_(options.output),
      strictness_(options.strictness),
      files_(std::move(files)),
      progress_(files_.paths),
      check_(output_ == Output::products ? ProductCheck::Output::text : ProductCheck::Output::verdict) {}

ExitStatus CatalogueCheck::run() {
  for (const auto& failure : files_.failures) {
    if (const auto written = addUnreadable(failure.path, failure.reason); !written) {
      return writingFailed(written.error());
    }
  }
  for (std::size_t done = 0; done < files_.paths.size(); ++done) {
    if (const auto written = checkFile(done); !written) return writingFailed(written.error());
  }
  progress_.clear();
  if (const auto written = conclude(); !written) return writingFailed(written.error());
  if (unreadable_ > 0) return ExitStatus::trouble;
  return refused_ + strayErrors_ > 0 ? ExitStatus::refused : ExitStatus::good;
}

CatalogueCheck::Written CatalogueCheck::checkFile(std::size_t index) {
  const std::string& path = files_.paths[index];
  const std::string name = path == "-" ? "standard input" : path;
  auto window = InputWindow::open(path);
  if (!window) return addUnreadable(name, window.error());
  ProductReader reader(std::move(*window));
  while (true) {
    const auto item = reader.next();
    if (!item) return addUnreadable(name, item.error());
    if (!*item) break;
    const auto* const product = std::get_if<ProductText>(&**item);
    const auto written =
        product != nullptr ? checkProduct(name, *product) : addBrokenText(name, std::get<BrokenText>(**item));
    if (!written) return written;
    progress_.update(index + 1, products_, bytesBefore_ + reader.bytesRead());
  }
  bytesBefore_ += reader.bytesRead();
  return {};
}

CatalogueCheck::Written CatalogueCheck::checkProduct(const std::string& name, const ProductText& product) {
  ++products_;
  auto checked = check_.check(product);
  bool isRefused = false;
  for (Finding& finding : checked.findings) {
    if (strictness_ == Strictness::refuses) finding.severity = Severity::error;
    isRefused |= finding.severity == Severity::error;
    warnings_ += finding.severity == Severity::warning ? 1 : 0;
    if (const auto written = report(name, finding); !written) return written;
  }
  refused_ += isRefused ? 1 : 0;
  if (isRefused || output_ != Output::products) return {};
  progress_.clear();
  return writeLine(checked.text);
}

CatalogueCheck::Written CatalogueCheck::addBrokenText(const std::string& name, const BrokenText& broken) {
  const bool isProduct = broken.number > 0;
  products_ += isProduct ? 1 : 0;
  ++(isProduct ? refused_ : strayErrors_);
  skippedBytes_ += broken.skippedBytes;
  return report(name, {.kind = FindingKind::syntax,
                       .message = broken.reason,
                       .position = broken.position,
                       .product = broken.number,
                       .skippedBytes = broken.skippedBytes});
}

CatalogueCheck::Written CatalogueCheck::addUnreadable(const std::string& name, const std::string& reason) {
  ++unreadable_;
  return report(name, {.kind = FindingKind::unreadable, .message = reason});
}

CatalogueCheck::Written CatalogueCheck::report(const std::string& name, const Finding& finding) {
  progress_.clear();
  if (output_ == Output::json) return writeLine(jsonLine(name, finding));
  std::fprintf(stderr, "%s\n", textLine(name, finding, colours_).c_str());
  return {};
}

CatalogueCheck::Written CatalogueCheck::writeLine(const std::string& line) {
  if (std::fwrite(line.data(), 1, line.size(), stdout) < line.size() || std::putc('\n', stdout) == EOF) {
    return std::unexpected(errno);
  }
  return {};
}

std::string CatalogueCheck::summary() const {
  std::string text = counted(products_, "product");
  if (refused_ > 0) text += ", " + std::to_string(refused_) + " refused";
  if (strayErrors_ > 0) text += ", " + counted(strayErrors_, "error") + " between products";
  if (skippedBytes_ > 0) text += ", " + counted(skippedBytes_, "byte") + " behind errors not read";
  if (unreadable_ > 0) text += ", " + counted(unreadable_, "file") + " not read";
  if (refused_ + strayErrors_ + unreadable_ == 0) text += products_ == 1 ? ", good" : ", all good";
  if (warnings_ > 0) text += ", " + counted(warnings_, "warning");
  return text;
}

/// The verdict is what `--check` is asked for; beside products it is an aside, and needless for a single one.
CatalogueCheck::Written CatalogueCheck::conclude() {
  if (output_ == Output::verdict) {
    if (const auto written = writeLine(summary()); !written) return written;
  }
  if (std::fflush(stdout) != 0) return std::unexpected(errno);
  const bool isAside =
      output_ == Output::products ? products_ + strayErrors_ + unreadable_ > 1 : output_ == Output::json;
  if (isAside) std::fprintf(stderr, "%s\n", summary().c_str());
  return {};
}

ExitStatus CatalogueCheck::writingFailed(int error) {
  progress_.clear();
  // Whoever closes a pipe wants no more, not even a complaint.
  if (error != EPIPE) {
    const Finding finding{.kind = FindingKind::unreadable,
                          .message = "cannot be written: " + std::generic_category().message(error)};
    std::fprintf(stderr, "%s\n", textLine("standard output", finding, colours_).c_str());
  }
  return ExitStatus::trouble;
}

}  // namespace corvane::tools
