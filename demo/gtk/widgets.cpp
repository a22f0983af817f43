#include "demo/gtk/widgets.h"

#include <utility>

namespace corvane::demo {

namespace {

constexpr const char* styleSheet = R"css(
window { background: #f4f2ee; color: #1b2530; font-size: 14px; }
.screens { background: #f4f2ee; }
.settings button { min-width: 28px; }
.screen { padding: 12px 12px 8px 12px; }
.title { font-size: 20px; font-weight: bold; }
.name { font-size: 15px; font-weight: bold; }
.soft { color: #5a6672; font-size: 12px; }
.quantity { color: #0a524b; background: #e1f1ee; border-radius: 14px; padding: 4px 12px; font-weight: bold; }
.card { background: #ffffff; border: 1px solid #e2ded6; border-radius: 14px; padding: 12px; }
.log { background: #1b2530; color: #dff3e6; border-radius: 14px; padding: 8px 12px;
       font-family: monospace; font-size: 11px; }
button { min-height: 42px; min-width: 42px; padding: 0 6px; border-radius: 12px; border: 1px solid #e2ded6;
         background: #ffffff; color: #1b2530; font-weight: bold; font-size: 13px; box-shadow: none; }
button:hover { background: #f4f2ee; }
button:active { background: #e1f1ee; border-color: #0f6b62; }
button:checked { background: #0f6b62; border-color: #0f6b62; color: #ffffff; }
button:disabled { color: #7b8389; }
button:focus-visible { outline: 2px solid #0f6b62; outline-offset: 1px; }
stackswitcher { background: #ffffff; border-top: 1px solid #e2ded6; padding: 6px 12px; }
stackswitcher button { min-height: 46px; border: none; border-radius: 12px; }
stackswitcher button:checked { background: #e1f1ee; color: #0a524b; }
)css";

using Press = std::function<void()>;
using Turn = std::function<void(bool isOn)>;
using Show = std::function<void()>;

void pressed(GtkButton*, gpointer press) noexcept { (*static_cast<Press*>(press))(); }
void turned(GtkToggleButton* button, gpointer turn) noexcept {
  (*static_cast<Turn*>(turn))(gtk_toggle_button_get_active(button) != FALSE);
}
void switched(GObject*, GParamSpec*, gpointer show) noexcept { (*static_cast<Show*>(show))(); }

/// Hands a callback over to a signal, which drops it with the widget.
template <class Callback>
void connect(GtkWidget* widget, const char* signal, GCallback handler, Callback callback) {
  g_signal_connect_data(
      widget, signal, handler, new Callback(std::move(callback)),
      [](gpointer kept, GClosure*) noexcept { delete static_cast<Callback*>(kept); }, static_cast<GConnectFlags>(0));
}

}  // namespace

WidgetHandle keep(GtkWidget* widget) {
  return {static_cast<GtkWidget*>(g_object_ref_sink(widget)), [](GtkWidget* kept) { g_object_unref(kept); }};
}

GtkWidget* makeButton(const char* text, std::function<void()> press) {
  GtkWidget* const button = gtk_button_new_with_label(text);
  gtk_widget_set_hexpand(button, TRUE);
  connect(button, "clicked", reinterpret_cast<GCallback>(&pressed), std::move(press));
  return button;
}

GtkWidget* makeSwitch(const char* text, bool isOn, std::function<void(bool isOn)> turn) {
  GtkWidget* const button = gtk_toggle_button_new_with_label(text);
  gtk_widget_set_hexpand(button, TRUE);
  gtk_toggle_button_set_active(as<GtkToggleButton>(button), isOn ? TRUE : FALSE);
  connect(button, "toggled", reinterpret_cast<GCallback>(&turned), std::move(turn));
  return button;
}

void whenSwitched(GtkWidget* stack, std::function<void()> show) {
  connect(stack, "notify::visible-child-name", reinterpret_cast<GCallback>(&switched), std::move(show));
}

GtkWidget* makeLabel(const std::string& text, const char* style) {
  GtkWidget* const label = gtk_label_new(text.c_str());
  gtk_label_set_xalign(as<GtkLabel>(label), 0);
  gtk_label_set_ellipsize(as<GtkLabel>(label), PANGO_ELLIPSIZE_END);
  gtk_widget_add_css_class(label, style);
  return label;
}

GtkWidget* makeColumn(int spacing, const char* style) {
  GtkWidget* const column = gtk_box_new(GTK_ORIENTATION_VERTICAL, spacing);
  gtk_widget_add_css_class(column, style);
  return column;
}

GtkWidget* makeRow() { return gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 8); }

GtkWidget* makeScrolled(GtkWidget* content) {
  GtkWidget* const scrolled = gtk_scrolled_window_new();
  gtk_scrolled_window_set_policy(as<GtkScrolledWindow>(scrolled), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
  gtk_scrolled_window_set_child(as<GtkScrolledWindow>(scrolled), content);
  return scrolled;
}

void append(GtkWidget* box, GtkWidget* child) { gtk_box_append(as<GtkBox>(box), child); }

void buildPhoneWindow(GtkWidget* window, GtkWidget* content, bool isDecorated, GMainLoop* loop) {
  gtk_window_set_title(as<GtkWindow>(window), "Corvane demo");
  gtk_window_set_default_size(as<GtkWindow>(window), phoneWidth, phoneHeight);
  gtk_window_set_decorated(as<GtkWindow>(window), isDecorated);
  gtk_window_set_child(as<GtkWindow>(window), content);
  // The handler belongs to the window; the loop outlives both.
  g_signal_connect_swapped(window, "destroy", reinterpret_cast<GCallback>(&g_main_loop_quit), loop);
}

void installStyle() {
  GtkCssProvider* const provider = gtk_css_provider_new();
  gtk_css_provider_load_from_data(provider, styleSheet, -1);
  gtk_style_context_add_provider_for_display(gdk_display_get_default(), reinterpret_cast<GtkStyleProvider*>(provider),
                                             GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  g_object_unref(provider);
}

}  // namespace corvane::demo
