/// What the stand-in agent tool must answer, request by request, trouble by trouble.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "benchmarks/soak/requests.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/product/product.h"

namespace corvane::soak {

/// A request as the page got it, and the trouble that it met there.
struct Arrival {
  std::string type{};
  std::string sku{};
  std::int64_t quantity = 0;
  std::string trouble{};
  std::int64_t milliseconds = 0;
  std::string text{};

  [[nodiscard]] static Arrival read(JsonView json);
  [[nodiscard]] bool timesOut() const;
};

/// Its call and its cart change as those of the page do.
class PageModel {
 public:
  explicit PageModel(std::vector<Product> products) : products_(std::move(products)) {}

  /// Starts from what the page says of itself.
  void begin(JsonView pageState);
  /// Carries out what has arrived and gives the outcome that the host app must see.
  [[nodiscard]] std::string receive(const Arrival& arrival, Operation operation);
  /// What the item of the cart held when the cart status was asked for last.
  [[nodiscard]] std::int64_t quantityOf(std::string_view sku) const;
  /// The state in words, to be compared with that of the page.
  [[nodiscard]] std::string state() const;
  [[nodiscard]] static std::string stateOf(JsonView pageState);
  /// How many events of the cart the page has posted.
  [[nodiscard]] std::int64_t cartEventCount() const { return cartEventCount_; }

 private:
  [[nodiscard]] std::string carryOut(const Arrival& arrival, Operation operation);
  void setQuantity(const std::string& sku, std::int64_t quantity);
  void addToCall(const Product& product);
  [[nodiscard]] bool removeFromCall(std::string_view sku);
  [[nodiscard]] bool isInCall(std::string_view sku) const;
  [[nodiscard]] CartQuantities quantities() const;

  struct Article {
    std::string sku;
    /// Of the product that it is a variation of.
    std::string ownSku;
  };

  std::vector<Product> products_;
  std::vector<Article> call_;
  /// In the order in which the lines came.
  std::vector<std::pair<std::string, std::int64_t>> cart_;
  std::int64_t cartEventCount_ = 0;
};

}  // namespace corvane::soak
