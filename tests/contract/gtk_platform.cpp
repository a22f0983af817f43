#include <gtk/gtk.h>
#include <unistd.h>
#include <webkit/webkit.h>

#include <filesystem>
#include <utility>
#include <vector>

#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/gtk/gtk_developer_tools.h"
#include "corvane/platform/gtk/gtk_frame_meter.h"
#include "corvane/platform/gtk/gtk_screenshot.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "demo/gtk/pointer_input.h"
#include "tests/contract/gtk_platform.h"

namespace corvane::contract {

namespace {

WebKitWebView* findPage(GtkWidget* widget) {
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (WEBKIT_IS_WEB_VIEW(child)) return reinterpret_cast<WebKitWebView*>(child);
  }
  return nullptr;
}

GtkWindow* makeHostWindow(GtkWidget* child) {
  auto* const window = reinterpret_cast<GtkWindow*>(gtk_window_new());
  gtk_window_set_default_size(window, 390, 844);
  gtk_window_set_decorated(window, FALSE);
  gtk_window_set_child(window, child);
  gtk_window_present(window);
  return window;
}

class GtkPointer final : public TestPointer {
 public:
  static std::unique_ptr<TestPointer> open(GtkWidget* widget, std::string& reason) {
    auto input = demo::PointerInput::open(widget, reason);
    if (input == nullptr) return nullptr;
    return std::make_unique<GtkPointer>(std::move(input));
  }
  explicit GtkPointer(std::unique_ptr<demo::PointerInput> input) : input_(std::move(input)) {}

  void press(int button) override { input_->press(button); }
  void release(int button) override { input_->release(button); }
  bool hasFingers() const override { return input_->hasFingers(); }
  void touch(int finger, TouchPhase phase, CGPoint at) override { input_->touch(finger, phase, at); }
  void type(std::initializer_list<Key> chord) override {
    static constexpr unsigned values[] = {GDK_KEY_Tab,   GDK_KEY_space, GDK_KEY_Return, GDK_KEY_Left,
                                          GDK_KEY_Right, GDK_KEY_Up,    GDK_KEY_Down,   GDK_KEY_a};
    std::vector<unsigned> keys;
    for (const Key key : chord) keys.push_back(values[std::to_underlying(key)]);
    input_->type(keys);
  }

 private:
  void moveNow(CGPoint to) override { input_->move(to); }

  std::unique_ptr<demo::PointerInput> input_;
};

std::function<int()> frameCounter(GtkWidget* widget) {
  auto meter = std::make_shared<gtk::FrameMeter>(widget);
  return [meter] { return meter->result().frames; };
}

class GtkScreen final : public TestScreen {
 public:
  explicit GtkScreen(bool isShown) {
    if (isShown) host_ = makeHostWindow(surface_->widget());
  }
  GtkScreen(const GtkScreen&) = delete;
  GtkScreen& operator=(const GtkScreen&) = delete;
  ~GtkScreen() override {
    if (host_ != nullptr) gtk_window_destroy(host_);
  }

  std::shared_ptr<UIWindow> window() override { return surface_ != nullptr ? surface_->window() : nullptr; }
  void endSurface() override { surface_.reset(); }
  std::unique_ptr<TestPointer> openPointer(std::string& reason) override {
    return GtkPointer::open(surface_->widget(), reason);
  }
  std::function<int()> countFrames() override { return frameCounter(surface_->widget()); }

 private:
  std::shared_ptr<gtk::Surface> surface_ = gtk::Surface::create();
  GtkWindow* host_ = nullptr;
};

class GtkPlatform final : public GtkEnginePlatform {
 public:
  static std::unique_ptr<RealEnginePlatform> make(std::string& reason) {
    auto backend = gtk::Backend::install({.usesMockCaptureDevices = true,
                                          .isEphemeral = true,
                                          .userAgentSuffix = userAgentSuffix,
                                          .languages = {pageLanguage},
                                          .longestMessage = longestMessage});
    if (!backend) reason = backend.error();
    if (!backend) return nullptr;
    auto platform = std::make_unique<GtkPlatform>(*std::move(backend));
    reason = platform->begin();
    if (!reason.empty()) return nullptr;
    return platform;
  }

  explicit GtkPlatform(std::unique_ptr<gtk::Backend> backend) : backend_(std::move(backend)) {
    backend_->setCapturePrompt(prompt());
    gtk_overlay_set_child(overlay_, hostWidgets_);
    gtk_overlay_add_overlay(overlay_, surface_->widget());
    window_ = makeHostWindow(reinterpret_cast<GtkWidget*>(overlay_));
  }
  GtkPlatform(const GtkPlatform&) = delete;
  GtkPlatform& operator=(const GtkPlatform&) = delete;
  ~GtkPlatform() override {
    gtk_window_destroy(window_);
    surface_.reset();
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
  }

  const std::shared_ptr<UIWindow>& window() override { return surface_->window(); }

  void pageLosesItsProcess(const UIView&) override {
    webkit_web_view_terminate_web_process(findPage(surface_->widget()));
  }

  std::function<Colour(int, int)> takePicture() override {
    const auto file = std::filesystem::temp_directory_path() / ("corvane_" + std::to_string(getpid()) + ".png");
    if (!gtk::saveScreenshot(surface_->widget(), file)) return [](int, int) { return Colour{}; };
    const std::shared_ptr<GdkPixbuf> picture(gdk_pixbuf_new_from_file(file.c_str(), nullptr), &g_object_unref);
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    const int scale = gtk_widget_get_scale_factor(surface_->widget());
    return [picture, scale](int x, int y) {
      const guchar* const pixel = gdk_pixbuf_read_pixels(picture.get()) +
                                  scale * y * gdk_pixbuf_get_rowstride(picture.get()) +
                                  scale * x * gdk_pixbuf_get_n_channels(picture.get());
      return Colour{pixel[0], pixel[1], pixel[2]};
    };
  }

  std::function<int()> countFrames() override { return frameCounter(surface_->widget()); }
  void queueFrame() override { gtk_widget_queue_draw(surface_->widget()); }
  std::unique_ptr<TestPointer> openPointer(std::string& reason) override {
    return GtkPointer::open(surface_->widget(), reason);
  }
  bool showDeveloperTools(const UIView& view) override { return gtk::showDeveloperTools(view); }
  int windowCount() override { return static_cast<int>(g_list_model_get_n_items(gtk_window_get_toplevels())); }
  void setSurfaceVisible(bool isVisible) override { gtk_widget_set_visible(surface_->widget(), isVisible); }
  std::unique_ptr<TestScreen> makeScreen(bool isShown) override { return std::make_unique<GtkScreen>(isShown); }

  void moveSurface(bool isAlone) override {
    if (isAlone) {
      gtk_overlay_remove_overlay(overlay_, surface_->widget());
      otherWindow_ = makeHostWindow(surface_->widget());
    } else {
      gtk_window_set_child(otherWindow_, nullptr);
      gtk_window_destroy(otherWindow_);
      gtk_overlay_add_overlay(overlay_, surface_->widget());
    }
  }

  void addHostButton(const CGRect& frame, std::function<void()> clicked) override {
    static_cast<void>(addButton(frame, std::move(clicked)));
  }

  Focus focus() override {
    GtkWidget* const focus = gtk_root_get_focus(gtk_widget_get_root(surface()));
    if (focus == nullptr) return Focus::nothing;
    if (focus == surface()) return Focus::surface;
    return gtk_widget_get_parent(focus) == surface() ? Focus::page : Focus::host;
  }

  bool iterate(bool mayBlock) override { return g_main_context_iteration(nullptr, mayBlock) != FALSE; }

  GtkWidget* surface() override { return surface_->widget(); }
  void useOwnCaptureDialog() override { backend_->setCapturePrompt({}); }
  GtkWidget* addButton(const CGRect& frame, std::function<void()> clicked) override {
    GtkWidget* const button = gtk_button_new();
    gtk_widget_set_size_request(button, static_cast<int>(frame.size.width), static_cast<int>(frame.size.height));
    gtk::connectForLife<void(GtkButton*)>(button, "clicked", [clicked = std::move(clicked)](GtkButton*) { clicked(); });
    gtk_fixed_put(reinterpret_cast<GtkFixed*>(hostWidgets_), button, frame.minX(), frame.minY());
    return button;
  }

  void setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) override {
    backend_->setCaptureAuthorization(mediaType, status);
  }

 private:
  std::unique_ptr<gtk::Backend> backend_;
  std::shared_ptr<gtk::Surface> surface_ = gtk::Surface::create();
  GtkOverlay* overlay_ = reinterpret_cast<GtkOverlay*>(gtk_overlay_new());
  GtkWidget* hostWidgets_ = gtk_fixed_new();
  GtkWindow* window_ = nullptr;
  GtkWindow* otherWindow_ = nullptr;
};

}  // namespace

RealEngineMaker gtkEngine() { return {"RealEngine", GtkPlatform::make}; }

}  // namespace corvane::contract
