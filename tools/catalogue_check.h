/// One run over a catalogue.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <expected>
#include <string>

#include "tools/catalogue_files.h"
#include "tools/command_options.h"
#include "tools/finding.h"
#include "tools/finding_writer.h"
#include "tools/product_check.h"
#include "tools/product_reader.h"
#include "tools/progress_line.h"

namespace corvane::tools {

enum class ExitStatus { good = EXIT_SUCCESS, refused = 1, trouble = 2 };

/// Checks the products of some files, says what is wrong with them, and counts.
class CatalogueCheck {
 public:
  CatalogueCheck(const Options& options, CatalogueFiles files);

  ExitStatus run();

 private:
  /// The number of the error where standard output takes no more.
  using Written = std::expected<void, int>;

  Written checkFile(std::size_t index);
  Written checkProduct(const std::string& name, const ProductText& product);
  Written addBrokenText(const std::string& name, const BrokenText& broken);
  Written addUnreadable(const std::string& name, const std::string& reason);
  Written report(const std::string& name, const Finding& finding);
  Written writeLine(const std::string& line);
  Written conclude();
  [[nodiscard]] std::string summary() const;
  ExitStatus writingFailed(int error);

  Output output_;
  Strictness strictness_;
  CatalogueFiles files_;
  Colours colours_ = wantedColours();
  ProgressLine progress_;
  ProductCheck check_;
  std::size_t bytesBefore_ = 0;  ///< in the files that are done
  std::size_t products_ = 0;
  std::size_t refused_ = 0;
  std::size_t strayErrors_ = 0;  ///< that belong to no product
  std::size_t warnings_ = 0;
  std::size_t skippedBytes_ = 0;
  std::size_t unreadable_ = 0;
};

}  // namespace corvane::tools
