/// Pictures of what the demo shows.
#pragma once

#include <gtk/gtk.h>

#include <filesystem>
#include <string>

namespace corvane::demo {

/// Saves what a widget shows as a picture in a folder, which is made where it is missing, and prints how that went. A
/// window that is about to be laid out is tried again a moment later.
void savePicture(GtkWidget* widget, const std::filesystem::path& folder, const std::string& name);

}  // namespace corvane::demo
