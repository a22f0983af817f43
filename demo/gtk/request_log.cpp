#include "demo/gtk/request_log.h"

#include <cstdio>

namespace corvane::demo {

namespace {

constexpr std::size_t linesKept = 30;
constexpr int height = 116;

}  // namespace

RequestLog::RequestLog()
    : label_(keep(makeLabel("What you ask is logged here.", "lines"))), log_(keep(makeScrolled(label_.get()))) {
  auto* const label = as<GtkLabel>(label_.get());
  gtk_label_set_yalign(label, 0);
  gtk_label_set_ellipsize(label, PANGO_ELLIPSIZE_NONE);
  gtk_label_set_wrap(label, TRUE);
  gtk_label_set_wrap_mode(label, PANGO_WRAP_WORD_CHAR);
  gtk_widget_add_css_class(widget(), "log");
  gtk_widget_set_size_request(widget(), -1, height);
}

void RequestLog::add(const std::string& line) {
  std::printf("request: %s\n", line.c_str());
  std::fflush(stdout);
  lines_.push_front(line);
  if (lines_.size() > linesKept) lines_.pop_back();
  std::string text;
  for (const std::string& shown : lines_) text.append(text.empty() ? "" : "\n").append(shown);
  gtk_label_set_text(as<GtkLabel>(label_.get()), text.c_str());
}

}  // namespace corvane::demo
