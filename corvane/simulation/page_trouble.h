/// What may go wrong with the answers of a page.
#pragma once

#include <chrono>
#include <string>
#include <variant>

#include "corvane/export.h"

namespace corvane::simulation {

/// The actions themselves take effect all the same, except where the page never gets them.
struct PageTrouble {
  struct None {};
  /// Each answer comes this much later.
  struct AnswersLate {
    std::chrono::milliseconds delay;
  };
  struct NeverAnswers {};
  struct AnswersTwice {};
  /// The answer names a request that nobody made.
  struct AnswersUnknownIdentifier {};
  /// Each answer is an error with this text.
  struct AnswersWithError {
    /// Valid UTF-8, like everything in a page.
    std::string text;
  };
  /// The answer's "result" is none that anybody expects.
  struct AnswersWithWrongType {};
  /// An answer waits until the next one is due, and comes after that.
  struct AnswersInReverseOrder {};
  /// The page's own code for actions throws, so that nothing happens.
  struct ThrowsInHandler {};
  /// Something has taken the function away that the host calls, so that every script fails.
  struct HasNoPostAction {};

  using Value = std::variant<None, AnswersLate, NeverAnswers, AnswersTwice, AnswersUnknownIdentifier, AnswersWithError,
                             AnswersWithWrongType, AnswersInReverseOrder, ThrowsInHandler, HasNoPostAction>;
};

}  // namespace corvane::simulation
