#!/bin/sh
# What Doxygen reads instead of a file: headers in their chapter of the reference, documents with links that it follows.
case $1 in
  *.md)  # It makes anchors of its own for headings, so links lead to the page.
    exec sed -E -e 's/\[([^]]*)\]\(#[^)]*\)/\1/g; s/\.md#[^)]*\)/.md)/g' -e '/^<!-- program: /d' "$1" ;;
  *platform/gtk/* | *platform/qt/* | *corvane/quick/*) chapter=toolkits ;;
  *platform/headless/* | *simulation/*) chapter=testing ;;
  *platform/web/web_engine.h | *platform/web/url_request.h | *foundation/platform.h | *web/wk_*) chapter=backends ;;
  *views/touch_* | *declarative/body_observation.h | *declarative/view_pass.h | *declarative/notifier.h) chapter=backends ;;
  *views/* | *geometry/* | *platform/declarative/*) chapter=views ;;
  *product/*) chapter=products ;;
  *foundation/* | *export.h | *version.h | *capture/* | *web/*) chapter=basics ;;
  *) chapter=calls ;;
esac
# A header begins with a comment about the file.
exec sed -e '1s#^///#/// @file\n///#' -e '/^.pragma once/d' \
  -e "/^namespace corvane.*{\$/a /// @addtogroup $chapter\n/// @{" -e '/^}  \/\/ namespace corvane/i /// @}' "$1"
