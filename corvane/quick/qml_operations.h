/// What a screen in QML can ask of the page.
#pragma once

#include <QJSValue>
#include <QObject>
#include <QString>

#include "corvane/agent_view/agent_operations.h"

namespace corvane::quick {

/// The product and cart operations, with functions of QML as completions.
///
/// A completion may be left out. It is called with the error, an object with `name` and `description` or null, and with
/// the value that was asked for: null where the page gave none. Products are objects of the JSON form, or its text.
/// What makes no sense, such as a product without variations, throws inside the call, as calls in QML do.
///
/// Ownership: a base of the singletons, which the QML engine owns. Threads: main thread only.
class QmlOperations : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void addProductToCall(const QJSValue& product, const QJSValue& completion = {});
  Q_INVOKABLE void getProductsInCall(const QJSValue& completion);
  Q_INVOKABLE void isProductInCall(const QString& sku, const QJSValue& completion);
  Q_INVOKABLE void removeProductInCall(const QString& sku, const QJSValue& completion = {});
  Q_INVOKABLE void addProductToCart(const QString& sku, const QJSValue& completion = {});
  Q_INVOKABLE void updateProductInCart(const QString& sku, double quantity, const QJSValue& completion = {});
  Q_INVOKABLE void getProductsInCart(const QJSValue& completion);
  Q_INVOKABLE void getCartStatus(const QJSValue& completion);
  Q_INVOKABLE void isProductInCart(const QString& sku, const QJSValue& completion);
  Q_INVOKABLE void removeProductInCart(const QString& sku, const QJSValue& completion = {});
  Q_INVOKABLE void decrementProductInCart(const QString& sku, const QJSValue& completion = {});

 protected:
  explicit QmlOperations(AgentOperations& operations) : operations_(&operations) {}

 private:
  /// Completions that call a function of QML.
  [[nodiscard]] AgentErrorCompletion whenDone(const QJSValue& completion);
  template <class Value>
  [[nodiscard]] AgentResultCompletion<Value> whenAnswered(const QJSValue& completion);
  void call(const QJSValue& completion, const QVariant& error, const QVariant& value);

  AgentOperations* operations_;
};

}  // namespace corvane::quick
