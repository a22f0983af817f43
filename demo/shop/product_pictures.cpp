#include "demo/shop/product_pictures.h"

#include <array>

namespace corvane::demo {

std::string pictureFile(std::size_t index) {
  static constexpr std::array names{"shirt_oxford", "jeans_slim", "charger_usb", "gift_card"};
  return CORVANE_DEMO_PAGES "/pictures/" + std::string(names.at(index)) + ".png";
}

}  // namespace corvane::demo
