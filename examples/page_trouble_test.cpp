#include <corvane/corvane.h>
#include <corvane/platform/headless/headless_backend.h>
#include <corvane/simulation/simulated_agent_tool.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>

using namespace corvane;
using namespace std::chrono_literals;
using simulation::PageTrouble;

// A part of your app: puts the shirt into the cart, and changes the text beside its button. The button may be gone when
// the completion comes, so the text is shared.
void addShirt(VelnorAgentView& view, const std::shared_ptr<std::string>& text) {
  *text = "...";
  view.addProductToCart("SHIRT-M", [text](std::optional<AgentError> error) {
    if (!error) {
      *text = "added";
    } else {
      *text = error->is<AgentError::RequestTimeout>() ? "try again" : error->what();
    }
  });
}

int main() {
  const auto backend = headless::Backend::install().value();
  const auto view = VelnorAgentView::create(Region::eu(), "shop-42", /*enableSSO=*/false);
  const auto page = simulation::SimulatedAgentTool::attach(view);
  view->loadBooking("booking-7");
  backend->runLoop().runUntilIdle();
  page->postCallStatus(CallSessionStatus::running);

  const auto text = std::make_shared<std::string>();
  const auto textAfter = [&](std::chrono::milliseconds time, PageTrouble::Value trouble) {
    page->setTrouble(std::move(trouble));
    addShirt(*view, text);
    backend->runLoop().advance(time);
    return *text;
  };
  const bool isGood = textAfter(0s, PageTrouble::None{}) == "added" &&
                      textAfter(0s, PageTrouble::AnswersWithError{"sold out"}) == "sold out" &&
                      textAfter(4s, PageTrouble::AnswersLate{4900ms}) == "..." &&
                      textAfter(10s, PageTrouble::NeverAnswers{}) == "try again" &&
                      page->shop().cart().at("SHIRT-M") == 4;  // it was added each time, whatever the page answered
  return isGood ? EXIT_SUCCESS : EXIT_FAILURE;
}
