// Random walks over screens with agents, against a model that knows who holds which view.
#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <sstream>

#include "tests/support/agent_screens_test.h"
#include "tests/support/reset_context.h"

namespace corvane {
namespace {

enum class Place { nowhere, screen, window };

/// What a screen shows; a screen around a view shows that one, the others make or find theirs.
struct Screen {
  int identity = 0;
  bool hasAgent = false;
  std::string organisation{};
  std::string booking{};
};

struct ModelView {
  std::string organisation{};
  std::string booking{};
  bool isLoaded = false;
  bool isMinimized = false;
  std::size_t loads = 0;
  Place place = Place::nowhere;
};

/// Everything that can be seen from outside; views are known by the order in which they were made.
struct Snapshot {
  std::map<std::size_t, ModelView> alive{};
  std::optional<std::size_t> inContext;
  std::optional<std::size_t> inHolder;
  bool hasAgent = false;
  bool isMinimized = false;

  [[nodiscard]] std::string text() const {
    const auto place = [](std::optional<std::size_t> index) { return index ? std::to_string(*index) : "none"; };
    std::ostringstream out;
    for (const auto& [index, view] : alive) {
      out << index << ": " << view.organisation << "/" << view.booking << (view.isLoaded ? " loaded" : "")
          << (view.isMinimized ? " minimized" : "") << " " << view.loads << " loads, place "
          << static_cast<int>(view.place) << "; ";
    }
    out << "context " << place(inContext) << ", holder " << place(inHolder) << (hasAgent ? ", agent" : "")
        << (isMinimized ? ", minimized" : "");
    return out.str();
  }
};

class Model {
 public:
  void show(const Screen& screen) {
    if (screen.hasAgent) hasAgent_ = true;
    if (screen_ && screen_->identity == screen.identity) return;
    std::optional<std::size_t> shown;
    if (screen.hasAgent) {
      const bool isReused = context_ && views_[*context_].organisation == screen.organisation;
      if (!isReused) {
        views_.push_back({.organisation = screen.organisation});
        holder_.reset();
      }
      shown = context_ = isReused ? *context_ : views_.size() - 1;
      ModelView& view = views_[*shown];
      if (!view.isLoaded || view.booking != screen.booking) load(view, screen.booking);
      view.place = Place::screen;
    }
    leave(shown);
    screen_ = screen;
    shown_ = shown;
  }
  void leave(std::optional<std::size_t> takenOver = std::nullopt) {
    if (shown_ && shown_ != takenOver && views_[*shown_].place == Place::screen) views_[*shown_].place = Place::nowhere;
    if (screen_ && screen_->hasAgent && context_ && !views_[*context_].isMinimized) {
      context_.reset();
      hasAgent_ = false;
    }
    screen_.reset();
    shown_.reset();
  }
  void minimize(std::size_t index) {
    if (views_[index].isMinimized || views_[index].place == Place::nowhere) return;
    views_[index].isMinimized = flag_ = true;
    views_[index].place = Place::window;
    holder_ = index;
  }
  void maximize(std::size_t index, const std::function<void(const Screen&)>& restore) {
    if (!views_[index].isMinimized) return;
    views_[index].isMinimized = flag_ = false;
    if (holder_ == index && isRestoring) {
      context_ = index;
      hasAgent_ = true;
      restore({.hasAgent = true, .organisation = views_[index].organisation, .booking = views_[index].booking});
    }
    holder_.reset();
  }
  void removeFloating() {
    if (holder_) views_[*holder_].place = Place::nowhere;
    holder_.reset();
  }
  void finishLoad(std::size_t index) { views_[index].isLoaded = true; }

  [[nodiscard]] Snapshot snapshot() const {
    Snapshot snapshot{.inContext = context_, .inHolder = holder_, .hasAgent = hasAgent_, .isMinimized = flag_};
    for (std::size_t index = 0; index < views_.size(); ++index) {
      const bool isHeld = context_ == index || holder_ == index || shown_ == index;
      if (isHeld || views_[index].place == Place::window) snapshot.alive[index] = views_[index];
    }
    return snapshot;
  }

  bool isRestoring = false;

 private:
  static void load(ModelView& view, const std::string& booking) {
    view.booking = booking;
    ++view.loads;
  }

  std::vector<ModelView> views_;
  std::optional<std::size_t> context_;
  std::optional<std::size_t> holder_;
  std::optional<std::size_t> shown_;
  std::optional<Screen> screen_;
  bool hasAgent_ = false;
  bool flag_ = false;
};

class AgentScreensModelTest : public AgentScreensTest {
 protected:
  void show(const Screen& screen, const std::optional<VelnorAgent>& restored = std::nullopt) {
    mount_->show(Composed{[screen, restored] {
                   return when(screen.hasAgent,
                               [&] { return restored ? *restored : agent(screen.organisation, screen.booking); });
                 }} |
                 id(screen.identity));
    noteNewView();
  }
  void noteNewView() {
    const auto noteIfNew = [this](const std::shared_ptr<VelnorAgentView>& view) {
      if (view != nullptr && !indexOf(view)) views_.emplace_back(view);
    };
    noteIfNew(context().agentView());
    for (const auto& subview : mount_->view()->subviews()) {
      noteIfNew(std::static_pointer_cast<VelnorAgentView>(subview));
    }
  }
  [[nodiscard]] std::optional<std::size_t> indexOf(const std::shared_ptr<VelnorAgentView>& view) const {
    const auto known = std::ranges::find(views_, view, [](const auto& weak) { return weak.lock(); });
    if (view == nullptr || known == views_.end()) return std::nullopt;
    return static_cast<std::size_t>(known - views_.begin());
  }
  [[nodiscard]] Snapshot snapshot() const {
    Snapshot snapshot{.inContext = indexOf(context().agentView()),
                      .inHolder = indexOf(minimizedState().agentView()),
                      .hasAgent = context().agent().has_value(),
                      .isMinimized = context().isMinimized()};
    for (std::size_t index = 0; index < views_.size(); ++index) {
      const auto view = views_[index].lock();
      if (view == nullptr) continue;
      const auto superview = view->superview();
      snapshot.alive[index] = {.organisation = view->organisationId(),
                               .booking = view->connectId().value_or(""),
                               .isLoaded = view->isLoaded(),
                               .isMinimized = view->isMinimized(),
                               .loads = loadCount(*view),
                               .place = superview == nullptr   ? Place::nowhere
                                        : superview == window_ ? Place::window
                                                               : Place::screen};
    }
    return snapshot;
  }

  void walk(unsigned seed);

  std::vector<std::weak_ptr<VelnorAgentView>> views_;
};

void AgentScreensModelTest::walk(unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  Model model;
  int restoredScreens = 0;
  for (int step = 0; step < 60; ++step) {
    const auto alive = model.snapshot().alive;
    const auto anyView = [&] {
      return std::next(alive.begin(), static_cast<std::ptrdiff_t>(below(alive.size())))->first;
    };
    switch (const std::size_t kind = below(10)) {
      case 0:
      case 1:
      case 2: {
        const std::vector<Screen> screens{
            {1}, {2, true, "shop", "b1"}, {3, true, "shop", "b2"}, {4, true, "other", "b1"}};
        const Screen& screen = screens[below(screens.size())];
        show(screen);
        model.show(screen);
        break;
      }
      case 3:
        mount_.reset();
        mount_ = ViewMount::create(*window_);
        model.leave();
        break;
      case 4:
        model.isRestoring = !model.isRestoring;
        minimizedState().registerRestoreAction(nullptr);
        if (!model.isRestoring) break;
        mount_->show(EmptyView{} | restoreAgentAction([&, this](const VelnorAgent& agent) {
                       show({.identity = -restoredScreens, .hasAgent = true}, agent);
                     }) |
                     id("registers " + std::to_string(step)));
        model.leave();
        break;
      case 5:
        minimizedState().remove();
        model.removeFloating();
        break;
      default: {
        if (alive.empty()) break;
        const std::size_t index = anyView();
        const auto view = views_[index].lock();
        ASSERT_NE(view, nullptr);
        if (kind == 6) {
          engine(*view).finishLoad();
          model.finishLoad(index);
        } else if (kind == 7) {
          ++restoredScreens;
          view->maximizeView();
          letRest();
          model.maximize(index, [&](Screen screen) {
            screen.identity = -restoredScreens;
            model.show(screen);
          });
        } else {
          minimize(*view);
          model.minimize(index);
        }
      }
    }
    ASSERT_EQ(snapshot().text(), model.snapshot().text()) << "seed " << seed << ", step " << step;
  }
  minimizedState().registerRestoreAction(nullptr);
}

TEST_F(AgentScreensModelTest, WalksEndAsTheModelSays) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    views_.clear();
    walk(seed);
    if (HasFatalFailure()) return;
    // A new beginning: nothing of this walk stays anywhere.
    mount_.reset();
    resetContext();
    MinimizedStore::shared().setAgentView(nullptr);
    window_ = UIWindow::create({{0, 0}, {390, 844}});
    mount_ = ViewMount::create(*window_);
    loop().advance(std::chrono::seconds(10));
    for (const auto& view : views_) EXPECT_TRUE(view.expired()) << "seed " << seed;
  }
}

}  // namespace
}  // namespace corvane
