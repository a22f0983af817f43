// Checks the products of a catalogue and prints them as the agent tool page gets them.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <expected>
#include <new>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_coding.h"
#include "corvane/product/product.h"
#include "corvane/product/product_size.h"
#include "corvane/product/product_spec_error.h"
#include "tools/catalogue_files.h"
#include "tools/printable_text.h"
#include "tools/product_reader.h"
#include "tools/progress_line.h"

namespace corvane::tools {

namespace {

constexpr const char* usage =
    R"(usage: corvane-product [--check] [FILE...]

Reads products as JSON, checks them, and prints each on a line of its own, as the agent tool page gets it.

FILE is a file with one product or several one after the other, a directory (all *.json files in it and below it), or
- for standard input, which is also read when no FILE is given.

  --check  prints no products, only whether they are good
  --help   prints this

For each product that is refused, standard error says where it was and what is wrong with it first.

Exit status: 0 all products are good, 1 some are refused, 2 wrong usage, or something could not be read or written.
)";

enum class ExitStatus { good = EXIT_SUCCESS, refused = 1, trouble = 2 };

enum class Output { products, verdict };

struct Options {
  Output output = Output::products;
  bool wantsHelp = false;
  std::vector<std::string> files{};
};

/// The options, or the argument that means nothing.
std::expected<Options, std::string> parseOptions(const std::vector<std::string>& arguments) {
  Options options;
  bool mayBeOption = true;
  for (const std::string& argument : arguments) {
    if (!mayBeOption || argument == "-" || !argument.starts_with('-')) {
      options.files.push_back(argument);
    } else if (argument == "--") {
      mayBeOption = false;
    } else if (argument == "--check") {
      options.output = Output::verdict;
    } else if (argument == "--help" || argument == "-h") {
      options.wantsHelp = true;
    } else {
      return std::unexpected(argument);
    }
  }
  if (options.files.empty()) options.files.emplace_back("-");
  return options;
}

/// The text that the page gets, or why there is none.
std::expected<std::string, std::string> checkedText(const std::string& text) {
  // The decoder refuses it, too, but cannot know where texts that begin like this come from.
  if (text.starts_with("\xEF\xBB\xBF")) {
    return std::unexpected("The text begins with a byte order mark; save it as UTF-8 without one.");
  }
  constexpr std::size_t largestText = std::size_t{256} * 1024 * 1024;
  try {
    const auto product = decodeJson<Product>(text);
    if (estimatedJsonSize(product) > largestText) {
      return std::unexpected("So many variations share a value that the product would take more than 256 MiB.");
    }
    return encodeJson(product);
  } catch (const std::bad_alloc&) {
    return std::unexpected("The product takes more memory than there is.");
    // Names in a catalogue may contain a NUL, at which what() ends.
  } catch (const DecodingError& error) {
    return std::unexpected(error.text());
  } catch (const EncodingError& error) {
    return std::unexpected(error.text());
  } catch (const ProductSpecError& error) {
    return std::unexpected(error.debugDescription());
  } catch (const std::exception& error) {
    return std::unexpected(error.what());
  }
}

std::string counted(std::size_t count, const char* noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

/// One run over a catalogue, with what has come of it so far.
class CatalogueCheck {
 public:
  CatalogueCheck(Output output, CatalogueFiles files)
      : output_(output), files_(std::move(files)), progress_(files_.paths.size()) {}

  ExitStatus run() {
    for (const auto& failure : files_.failures) skip(failure.path, failure.reason);
    for (std::size_t done = 0; done < files_.paths.size(); ++done) {
      if (const auto written = checkFile(done); !written) return writingFailed(written.error());
    }
    progress_.clear();
    if (const auto written = conclude(); !written) return writingFailed(written.error());
    if (skipped_ > 0) return ExitStatus::trouble;
    return refused_ > 0 ? ExitStatus::refused : ExitStatus::good;
  }

 private:
  using Written = std::expected<void, int>;

  Written checkFile(std::size_t index) {
    const std::string& path = files_.paths[index];
    const std::string name = path == "-" ? "standard input" : path;
    auto reader = ProductReader::open(path);
    if (!reader) {
      skip(name, reader.error());
      return {};
    }
    for (std::size_t number = 1;; ++number) {
      const auto text = reader->next();
      if (!text) {
        skip(name, text.error());
        return {};
      }
      if (!*text) return {};
      ++products_;
      const auto checked = checkedText(**text);
      if (!checked) {
        refuse(number == 1 ? name : name + ", product " + std::to_string(number), checked.error());
      } else if (output_ == Output::products) {
        progress_.clear();
        if (const auto written = writeLine(*checked); !written) return written;
      }
      progress_.update(index + 1, products_);
    }
  }

  void refuse(const std::string& place, const std::string& reason) {
    ++refused_;
    report(place, reason);
  }

  void skip(const std::string& path, const std::string& reason) {
    ++skipped_;
    report(path, reason);
  }

  void report(const std::string& place, const std::string& reason) {
    progress_.clear();
    std::fprintf(stderr, "%s: %s\n", printable(place).c_str(), printable(reason).c_str());
  }

  static Written writeLine(const std::string& line) {
    if (std::fwrite(line.data(), 1, line.size(), stdout) < line.size() || std::putc('\n', stdout) == EOF) {
      return std::unexpected(errno);
    }
    return {};
  }

  [[nodiscard]] std::string summary() const {
    std::string text = counted(products_, "product");
    if (refused_ > 0) text += ", " + std::to_string(refused_) + " refused";
    if (skipped_ > 0) text += ", " + counted(skipped_, "file") + " not read";
    if (refused_ == 0 && skipped_ == 0) text += products_ == 1 ? ", good" : ", all good";
    return text;
  }

  /// The verdict is what `--check` is asked for; beside products it is an aside, and needless for a single one.
  [[nodiscard]] Written conclude() const {
    if (output_ == Output::verdict) {
      if (const auto written = writeLine(summary()); !written) return written;
    }
    if (std::fflush(stdout) != 0) return std::unexpected(errno);
    if (output_ == Output::products && products_ + skipped_ > 1) std::fprintf(stderr, "%s\n", summary().c_str());
    return {};
  }

  ExitStatus writingFailed(int error) {
    report("standard output", "cannot be written: " + std::generic_category().message(error));
    return ExitStatus::trouble;
  }

  Output output_;
  CatalogueFiles files_;
  ProgressLine progress_;
  std::size_t products_ = 0;
  std::size_t refused_ = 0;
  std::size_t skipped_ = 0;
};

ExitStatus run(const std::vector<std::string>& arguments) {
  const auto options = parseOptions(arguments);
  if (!options) {
    std::fprintf(stderr, "corvane-product: no option %s; --help lists them\n", printable(options.error()).c_str());
    return ExitStatus::trouble;
  }
  if (options->wantsHelp) {
    std::fputs(usage, stdout);
    return std::fflush(stdout) == 0 ? ExitStatus::good : ExitStatus::trouble;
  }
  return CatalogueCheck(options->output, findCatalogueFiles(options->files)).run();
}

}  // namespace

}  // namespace corvane::tools

int main(int argc, char** argv) {
  // A reader that goes away is reported like any other failure to write.
  std::signal(SIGPIPE, SIG_IGN);
  // A program may be started without even its own name.
  return static_cast<int>(corvane::tools::run({argv + (argc > 0 ? 1 : 0), argv + argc}));
}
