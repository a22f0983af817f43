/// The few widgets that the host app is built from.
#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>

namespace corvane::demo {

constexpr int phoneWidth = 390;
constexpr int phoneHeight = 844;

/// Views a widget as what it is. The toolkit's own macros are C casts.
template <class Widget>
Widget* as(GtkWidget* widget) {
  return reinterpret_cast<Widget*>(widget);
}

/// Keeps a widget alive beside the container that it stands in.
using WidgetHandle = std::shared_ptr<GtkWidget>;
[[nodiscard]] WidgetHandle keep(GtkWidget* widget);

/// A button that calls `press`, also when it is called from the keyboard or by another program.
[[nodiscard]] GtkWidget* makeButton(const char* text, std::function<void()> press);
/// A button that stays pressed, and calls `turn` with whether it is each time that changes.
[[nodiscard]] GtkWidget* makeSwitch(const char* text, bool isOn, std::function<void(bool isOn)> turn);
/// Has `show` called when a stack shows another of its pages.
void whenSwitched(GtkWidget* stack, std::function<void()> show);
/// Left-aligned text; `style` is one of the classes of the style sheet.
[[nodiscard]] GtkWidget* makeLabel(const std::string& text, const char* style);
[[nodiscard]] GtkWidget* makeColumn(int spacing, const char* style);
/// Widgets side by side, which share the room that is left.
[[nodiscard]] GtkWidget* makeRow();
/// What does not fit into the height is scrolled.
[[nodiscard]] GtkWidget* makeScrolled(GtkWidget* content);
void append(GtkWidget* box, GtkWidget* child);
/// Sets a window up that is as large as a phone; closing it ends the loop.
void buildPhoneWindow(GtkWidget* window, GtkWidget* content, bool isDecorated, GMainLoop* loop);
/// Styles every window of the app.
void installStyle();

}  // namespace corvane::demo
