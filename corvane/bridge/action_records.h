/// The records that carry actions into the page.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "corvane/bridge/action_payloads.h"
#include "corvane/bridge/actionable.h"

namespace corvane {

/// An action without payload and answer.
class VoidAction final : public Actionable {
 public:
  explicit VoidAction(Action action) : _action(action) {}

  [[nodiscard]] std::string encode() const override;
  [[nodiscard]] Action action() const override { return _action; }
  [[nodiscard]] std::optional<std::string_view> callbackId() const override { return std::nullopt; }
  [[nodiscard]] bool requiresActiveCall() const override { return _action != Action::maximize; }
  void handleCallback(JsonView /*data*/, std::optional<AgentError> /*error*/, const CartQuantities& /*cart*/) override {
  }

 private:
  Action _action;
};

struct SSOActionFields {
  SSOActionData data{};
  Action action = Action::refreshSsoToken;
  std::optional<std::string> callbackId{};
  bool requiresActiveCall = false;
};

/// An action of signing in. Nobody waits for its answer.
class SSOAction final : public Actionable {
 public:
  explicit SSOAction(SSOActionFields fields) : fields_(std::move(fields)) {}

  [[nodiscard]] std::string encode() const override;
  [[nodiscard]] Action action() const override { return fields_.action; }
  [[nodiscard]] std::optional<std::string_view> callbackId() const override { return fields_.callbackId; }
  [[nodiscard]] bool requiresActiveCall() const override { return fields_.requiresActiveCall; }
  void handleCallback(JsonView /*data*/, std::optional<AgentError> /*error*/, const CartQuantities& /*cart*/) override {
  }

 private:
  SSOActionFields fields_;
};

/// An action whose answer completes a request of the host app.
template <class Data, class Completion>
class AnsweredAction : public Actionable {
 public:
  AnsweredAction(Data data, Completion callback, Action action)
      : data_(std::move(data)), callback_(std::move(callback)), _action(action) {}

  [[nodiscard]] std::string encode() const override;
  [[nodiscard]] Action action() const override { return _action; }
  [[nodiscard]] std::optional<std::string_view> callbackId() const override { return data_._id; }
  [[nodiscard]] bool requiresActiveCall() const override { return _action != Action::maximize; }

 protected:
  /// Calls the completion, once: a second answer may come while the first is being handled.
  template <class Outcome>
  void complete(Outcome&& outcome) {
    if (auto callback = std::exchange(callback_, nullptr)) callback(std::forward<Outcome>(outcome));
  }

 private:
  Data data_;
  Completion callback_;
  Action _action;
};

/// Asks for a list of SKUs.
class GetProductAction final : public AnsweredAction<RequestId, SkuListCompletion> {
 public:
  using AnsweredAction::AnsweredAction;
  void handleCallback(JsonView data, std::optional<AgentError> error, const CartQuantities& cart) override;
};

/// Adds a product to the call.
class AddProductAction final : public AnsweredAction<ProductActionData, AgentErrorCompletion> {
 public:
  using AnsweredAction::AnsweredAction;
  /// Keeps the text for when the product's turn has come: it may be long. Whoever asks for it first gets it.
  void tryToEncode() override { text_ = AnsweredAction::encode(); }
  [[nodiscard]] std::string encode() const override;
  void handleCallback(JsonView data, std::optional<AgentError> error, const CartQuantities& cart) override;

 private:
  mutable std::string text_;
};

/// Changes something about one SKU.
class SkuAction final : public AnsweredAction<SkuData, AgentErrorCompletion> {
 public:
  using AnsweredAction::AnsweredAction;
  void handleCallback(JsonView data, std::optional<AgentError> error, const CartQuantities& cart) override;
};

/// Asks a question about one SKU.
class SkuBoolResponseAction final : public AnsweredAction<SkuData, BooleanCompletion> {
 public:
  using AnsweredAction::AnsweredAction;
  void handleCallback(JsonView data, std::optional<AgentError> error, const CartQuantities& cart) override;
};

/// Asks which of the cart's lines the page knows.
class GetCartStatusAction final : public AnsweredAction<RequestId, CartStatusCompletion> {
 public:
  using AnsweredAction::AnsweredAction;
  /// Completes with the given cart's lines whose SKUs the answer lists.
  void handleCallback(JsonView data, std::optional<AgentError> error, const CartQuantities& cart) override;
};

}  // namespace corvane
