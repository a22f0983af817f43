#include "corvane/platform/declarative/view_mount.h"

#include <gmock/gmock.h>

#include <functional>

#include "corvane/platform/declarative/appearance.h"
#include "corvane/platform/declarative/box.h"
#include "corvane/platform/declarative/conditional_view.h"
#include "corvane/platform/declarative/observable_object.h"
#include "corvane/platform/declarative/ui_view_representable.h"
#include "corvane/platform/declarative/view_identity.h"
#include "corvane/platform/declarative/z_stack.h"
#include "corvane/platform/views/ui_window.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using Log = std::vector<std::string>;

class Model : public ObservableObject {
 public:
  Published<int> number{*this};
  Published<bool> isOn{*this};
};

class ViewMountTest : public HeadlessTest {
 protected:
  /// A platform view that is told apart by its name.
  class NamedView : public UIView {
   public:
    NamedView() : UIView(ConstructionKey{}) {}
    std::string name;
  };

  struct Named {
    using UIViewType = NamedView;
    Log* log;
    std::string name;

    [[nodiscard]] std::shared_ptr<NamedView> makeUIView() const {
      log->push_back("make " + name);
      return std::make_shared<NamedView>();
    }
    void updateUIView(NamedView& view) const { view.name = name; }
    static void dismantleUIView(NamedView& view) { view.name += " (gone)"; }
  };

  /// A composed view with all of it: a platform view, and notes of its coming and going.
  [[nodiscard]] auto noted(const std::string& name) {
    return Named{&log_, name} | onAppear([this, name] { log_.push_back("+" + name); }) |
           onDisappear([this, name] { log_.push_back("-" + name); });
  }
  /// The names of the platform views that are shown, from the back to the front.
  [[nodiscard]] static Log namesIn(const UIView& view) {
    Log names;
    for (const auto& subview : view.subviews()) {
      if (const auto* named = dynamic_cast<const NamedView*>(subview.get())) names.push_back(named->name);
    }
    return names;
  }
  [[nodiscard]] Log shown() const { return namesIn(*host_->view()); }

  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {390, 844}});
  Model model_;
  std::shared_ptr<ViewMount> host_ = ViewMount::create(*window_);
};

TEST_F(ViewMountTest, KeepsPlatformViewsByPlaceAndTypeAndFollowsWhatBodiesRead) {
  int evaluations = 0;
  host_->show(Composed{[&] {
    ++evaluations;
    return ZStack{noted("back " + std::to_string(model_.number.value())),
                  when(model_.isOn.value(), [&] { return noted("middle"); }), noted("front")};
  }});
  EXPECT_THAT(takeLog(), ElementsAre("make back 0", "make front", "+back 0", "+front"));
  const std::vector<std::shared_ptr<UIView>> views(host_->view()->subviews().begin(), host_->view()->subviews().end());
  EXPECT_EQ(views[0]->frame(), window_->bounds());

  model_.number.set(1);
  model_.number.set(2);
  model_.isOn.set(true);
  EXPECT_EQ(evaluations, 1) << "never inside the change";
  EXPECT_EQ(loop().pendingTaskCount(), 1U);
  loop().runUntilIdle();
  EXPECT_EQ(evaluations, 2) << "once for all changes";
  EXPECT_THAT(shown(), ElementsAre("back 2", "middle", "front"));
  EXPECT_THAT(takeLog(), ElementsAre("make middle", "+middle"));
  EXPECT_EQ(host_->view()->subviews().front(), views[0]);
  EXPECT_EQ(host_->view()->subviews().back(), views[1]);

  model_.isOn.set(false);
  loop().runUntilIdle();
  EXPECT_THAT(shown(), ElementsAre("back 2", "front"));
  window_->setFrame({{0, 0}, {844, 390}});
  EXPECT_EQ(views[0]->frame(), window_->bounds());
  host_.reset();
  EXPECT_THAT(takeLog(), ElementsAre("-middle", "-front", "-back 2"));
  EXPECT_EQ(dynamic_cast<const NamedView&>(*views[0]).name, "back 2 (gone)");
  EXPECT_TRUE(window_->subviews().empty());
  model_.number.set(3);
  EXPECT_EQ(loop().pendingTaskCount(), 0U) << "nobody follows any more";
}

TEST_F(ViewMountTest, OnlyBodiesThatReadTheValueAreEvaluatedAgain) {
  Log evaluated;
  const auto inner = [&](const std::string& name, bool reads) {
    return Composed{[&, name, reads] {
      evaluated.push_back(name);
      if (reads) static_cast<void>(model_.number.value());
      return noted(name);
    }};
  };
  host_->show(Composed{[&] {
    evaluated.emplace_back("outer");
    return ZStack{when(
                      model_.isOn.value(), [&] { return inner("a", false); }, [&] { return inner("b", true); }),
                  inner("c", false)};
  }});
  evaluated.clear();
  Model other;
  other.number.set(1);
  model_.number.set(1);
  loop().runUntilIdle();
  EXPECT_THAT(std::exchange(evaluated, {}), ElementsAre("outer", "b", "c")) << "the object is followed as a whole";
  takeLog();

  model_.isOn.set(true);
  loop().runUntilIdle();
  EXPECT_THAT(std::exchange(evaluated, {}), ElementsAre("outer", "a", "c"));
  EXPECT_THAT(takeLog(), ElementsAre("make a", "-b", "+a"));

  const auto late = [&](const char* name) {
    return Composed{[&, name] { return when(other.isOn.value(), [&, name] { return noted(name); }); }};
  };
  host_->show(ZStack{late("first"), inner("c", false), inner("b", true), late("last")});
  evaluated.clear();
  model_.number.set(2);
  loop().runUntilIdle();
  EXPECT_THAT(evaluated, ElementsAre("b"));
  other.isOn.set(true);
  loop().runUntilIdle();
  EXPECT_THAT(evaluated, ElementsAre("b")) << "it has been evaluated since";
  EXPECT_THAT(shown(), ElementsAre("first", "c", "b", "last"));
}

/// Reads a value where the modifier is applied.
struct NumberedModifier : ViewModifier {
  Model* model;
  Log* log;
  NumberedModifier(Model& model, Log& log) : model(&model), log(&log) {}
  template <View Content>
  [[nodiscard]] auto body(Content content) const {
    log->push_back("number " + std::to_string(model->number.value()));
    return content;
  }
};

TEST_F(ViewMountTest, ModifiersOfWhatIsShownFollowValuesToo) {
  host_->show(EmptyView{} | NumberedModifier(model_, log_));
  model_.number.set(1);
  loop().runUntilIdle();
  EXPECT_THAT(log_, ElementsAre("number 0", "number 1"));
}

TEST_F(ViewMountTest, BodiesInsideOfAnythingFollowWhatTheyReadNowAndInTheirPlaces) {
  Model other;
  Model still;
  int evaluations = 0;
  const auto numbered = [&](const char* name) {
    return Composed{[&, name] { return Named{&log_, name + std::to_string(model_.number.value())}; }};
  };
  const auto nothing = [] {};
  host_->show(ZStack{numbered("a") | onAppear(nothing), numbered("b") | onDisappear(nothing), numbered("c") | id(1),
                     numbered("d") | NumberedModifier(still, log_), when(true, [&] { return numbered("e"); }),
                     when(
                         false, [&] { return numbered("-"); }, [&] { return numbered("f"); }),
                     AnyView(numbered("g")), numbered("-") | box({}),
                     Composed{[&] { return when(model_.isOn.value(), [&] { return numbered("h"); }); }}, Composed{[&] {
                       ++evaluations;
                       if (!model_.isOn.value()) static_cast<void>(other.number.value());
                       return EmptyView{};
                     }}});
  model_.number.set(1);
  model_.isOn.set(true);
  loop().runUntilIdle();
  EXPECT_THAT(shown(), ElementsAre("a1", "b1", "c1", "d1", "e1", "f1", "g1", "h1"));
  EXPECT_THAT(namesIn(*host_->view()->subviews()[7]), ElementsAre("-1"));
  EXPECT_EQ(evaluations, 2);
  other.number.set(1);
  loop().runUntilIdle();
  EXPECT_EQ(evaluations, 2) << "it is not read any more";
  model_.number.set(2);
  loop().runUntilIdle();
  EXPECT_EQ(shown().back(), "h2");
  model_.isOn.set(false);
  loop().runUntilIdle();
  EXPECT_EQ(shown().back(), "g2");
  const AnyView same = noted("same");
  for (int time = 0; time < 2; ++time) host_->show(ZStack{same, same});
  EXPECT_THAT(shown(), ElementsAre("same", "same"));
}

TEST_F(ViewMountTest, IdentityIsTypeAndPlaceUnlessItIsSaid) {
  host_->show(noted("a") | id(1));
  host_->show(noted("b") | id(1));
  EXPECT_THAT(takeLog(), ElementsAre("make a", "+a"));
  EXPECT_THAT(shown(), ElementsAre("b"));
  host_->show(noted("c") | id(2));
  EXPECT_THAT(takeLog(), ElementsAre("make c", "-b", "+c")) << "the disappear action of the last evaluation";
  host_->show(noted("c") | id(2));
  host_->show(when(true, [&] { return noted("d"); }, [&] { return noted("e"); }));
  host_->show(when(false, [&] { return noted("d"); }, [&] { return noted("e"); }));
  EXPECT_THAT(takeLog(), ElementsAre("make d", "-c", "+d", "make e", "-d", "+e"));
  host_->show(ZStack{AnyView(noted("f")), AnyView(noted("g"))});
  host_->show(ZStack{AnyView(EmptyView{}), AnyView(noted("h"))});
  EXPECT_THAT(takeLog(), ElementsAre("make f", "make g", "-e", "+f", "+g", "-f"));
  EXPECT_THAT(shown(), ElementsAre("h"));
}

TEST_F(ViewMountTest, OuterViewsAppearAfterAndDisappearBeforeWhatIsInThem) {
  const auto note = [this](const std::string& what) { return [this, what] { log_.push_back(what); }; };
  host_->show(ZStack{EmptyView{} | onAppear(note("+1")) | onDisappear(note("-1")),
                     EmptyView{} | onDisappear(note("-2")) | onAppear(note("+2"))} |
              onAppear(note("+outer")) | onAppear({}) | onDisappear(note("-outer")));
  host_->remove();
  EXPECT_THAT(log_, ElementsAre("+1", "+2", "+outer", "-outer", "-2", "-1"));
}

TEST_F(ViewMountTest, ActionsMayShowSomethingElseAndEndTheHost) {
  host_->show(noted("a") | onAppear([&] {
                host_->show(ZStack{noted("b") | onDisappear([&] { host_.reset(); }), noted("c")});
                log_.emplace_back("asked");
              }) |
              onAppear([&] { log_.emplace_back("+all of a"); }));
  EXPECT_THAT(takeLog(), ElementsAre("make a", "+a", "asked", "+all of a", "make b", "make c", "-a", "+b", "+c"));
  host_->remove();
  EXPECT_EQ(host_, nullptr);
  EXPECT_THAT(takeLog(), ElementsAre("-c", "-b"));
  EXPECT_TRUE(window_->subviews().empty());
}

TEST_F(ViewMountTest, AChangeThatIsAnnouncedWhileSomethingIsShownIsNotMissed) {
  const auto screen = [&] {
    return Composed{[&] { return noted("number " + std::to_string(model_.number.value())); }};
  };
  host_->show(screen());
  Subscription hasty = model_.objectWillChange().subscribe([&] { host_->show(screen()); });
  model_.number.set(7);
  EXPECT_THAT(shown(), ElementsAre("number 0"));
  loop().runUntilIdle();
  EXPECT_THAT(shown(), ElementsAre("number 7"));
  host_->show(EmptyView{});
  bool isFirst = true;
  const Subscription late = model_.number.subscribe([&](int) {
    if (!std::exchange(isFirst, false)) host_->show(screen());
  });
  hasty.end();
  model_.number.set(8);
  loop().runUntilIdle();
  EXPECT_THAT(shown(), ElementsAre("number 8")) << "mounted after the object had announced its change";
}

TEST_F(ViewMountTest, BoxesHaveAPlaceAColourAndTaps) {
  const auto screen = [&](CGRect frame, std::function<void()> onTap) {
    return ZStack{noted("a") | box({.backgroundColor = UIColor{.red = 1}}),
                  EmptyView{} | box({.frame = frame, .onTap = std::move(onTap)})};
  };
  const auto tap = [&](CGPoint point) {
    window_->sendTouch({.identifier = 1, .phase = TouchPhase::began, .location = point});
    window_->sendTouch({.identifier = 1, .phase = TouchPhase::ended, .location = point});
  };
  host_->show(screen({{0, 0}, {100, 100}}, [&] {
    host_->show(screen({{200, 0}, {100, 100}}, [&] { host_->remove(); }));
    log_.emplace_back("tapped");
  }));
  const auto filling = host_->view()->subviews()[0];
  EXPECT_EQ(filling->frame(), window_->bounds());
  EXPECT_EQ(filling->backgroundColor(), UIColor{.red = 1});
  EXPECT_THAT(namesIn(*filling), ElementsAre("a"));
  window_->setFrame({{0, 0}, {400, 844}});
  tap({5, 50});
  tap({5, 50});
  EXPECT_THAT(takeLog(), ElementsAre("make a", "+a", "tapped")) << "the box has moved away from under the second tap";
  tap({250, 50});
  EXPECT_THAT(takeLog(), ElementsAre("-a"));
  EXPECT_EQ(window_->hitTest({250, 50}), nullptr) << "touches pass through what is empty";
  const auto placed = [](CGFloat x) {
    return EmptyView{} |
           box({.frame = CGRect{{x, 0}, {10, 10}}, .autoresizingMask = UIViewAutoresizing::flexibleLeftMargin});
  };
  std::vector<CGFloat> places;
  for (const CGFloat x : {0, 0, 7}) {
    host_->show(placed(x));
    window_->setFrame({{0, 0}, {window_->bounds().size.width + 10, 844}});
    places.push_back(host_->view()->subviews()[0]->frame().origin.x);
  }
  EXPECT_THAT(places, ElementsAre(10, 20, 17)) << "written only where the value has changed";
  const auto stacked = [&](const char* inside, AnyView front) {
    return ZStack{noted(inside) | box({}), std::move(front)};
  };
  host_->show(stacked("in", EmptyView{}));
  host_->show(stacked("inside", noted("front")));
  EXPECT_THAT(namesIn(*host_->view()->subviews()[0]), ElementsAre("inside"));
  EXPECT_THAT(shown(), ElementsAre("front"));
}

}  // namespace
}  // namespace corvane
