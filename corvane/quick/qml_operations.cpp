#include "corvane/quick/qml_operations.h"

#include <QPointer>
#include <QStringList>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlInfo>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/quick/qml_values.h"

namespace corvane::quick {

namespace {

QVariant valueFor(const std::vector<std::string>& skus) {
  QVariantList values;
  values.reserve(static_cast<qsizetype>(skus.size()));
  for (const std::string& sku : skus) values.append(QString::fromStdString(sku));
  return values;
}

QVariant valueFor(bool isTrue) { return isTrue; }

QVariant valueFor(const CartQuantities& quantities) {
  QVariantMap values;
  for (const auto& [sku, quantity] : quantities) {
    values.insert(QString::fromStdString(sku), static_cast<double>(quantity));
  }
  return values;
}

/// What QML has for nothing.
QVariant null() { return QVariant::fromValue(nullptr); }

}  // namespace

void QmlOperations::call(const QJSValue& completion, const QVariant& error, const QVariant& value) {
  QJSEngine* const engine = qjsEngine(this);
  if (engine == nullptr || !completion.isCallable()) return;
  const QJSValue outcome = completion.call({engine->toScriptValue(error), engine->toScriptValue(value)});
  if (outcome.isError()) qmlWarning(this) << "A completion failed: " << outcome.toString();
}

AgentErrorCompletion QmlOperations::whenDone(const QJSValue& completion) {
  return [self = QPointer(this), completion](const std::optional<AgentError>& error) {
    if (self != nullptr) self->call(completion, error ? QVariant(toVariant(*error)) : null(), null());
  };
}

template <class Value>
AgentResultCompletion<Value> QmlOperations::whenAnswered(const QJSValue& completion) {
  return [self = QPointer(this), completion](const AgentResult<Value>& result) {
    if (self == nullptr) return;
    if (!result) return self->call(completion, toVariant(result.error()), null());
    self->call(completion, null(), *result ? valueFor(**result) : null());
  };
}

void QmlOperations::addProductToCall(const QJSValue& product, const QJSValue& completion) {
  try {
    operations_->addProductToCall(productOf(product), whenDone(completion));
  } catch (const InvalidDataError& error) {
    qjsEngine(this)->throwError(QJSValue::TypeError, QString::fromUtf8(error.what()));
  }
}

void QmlOperations::getProductsInCall(const QJSValue& completion) {
  operations_->getProductsInCall(whenAnswered<std::vector<std::string>>(completion));
}

void QmlOperations::isProductInCall(const QString& sku, const QJSValue& completion) {
  operations_->isProductInCall(sku.toStdString(), whenAnswered<bool>(completion));
}

void QmlOperations::removeProductInCall(const QString& sku, const QJSValue& completion) {
  operations_->removeProductInCall(sku.toStdString(), whenDone(completion));
}

void QmlOperations::addProductToCart(const QString& sku, const QJSValue& completion) {
  operations_->addProductToCart(sku.toStdString(), whenDone(completion));
}

void QmlOperations::updateProductInCart(const QString& sku, double quantity, const QJSValue& completion) {
  // Beyond these QML's numbers are not all whole ones any more.
  constexpr double most = 9007199254740992;
  if (std::trunc(quantity) != quantity || std::abs(quantity) > most) {
    return qjsEngine(this)->throwError(QJSValue::RangeError, QStringLiteral("A quantity is a whole number"));
  }
  operations_->updateProductInCart(sku.toStdString(), static_cast<std::int64_t>(quantity), whenDone(completion));
}

void QmlOperations::getProductsInCart(const QJSValue& completion) {
  operations_->getProductsInCart(whenAnswered<std::vector<std::string>>(completion));
}

void QmlOperations::getCartStatus(const QJSValue& completion) {
  operations_->getCartStatus(whenAnswered<CartQuantities>(completion));
}

void QmlOperations::isProductInCart(const QString& sku, const QJSValue& completion) {
  operations_->isProductInCart(sku.toStdString(), whenAnswered<bool>(completion));
}

void QmlOperations::removeProductInCart(const QString& sku, const QJSValue& completion) {
  operations_->removeProductInCart(sku.toStdString(), whenDone(completion));
}

void QmlOperations::decrementProductInCart(const QString& sku, const QJSValue& completion) {
  operations_->decrementProductInCart(sku.toStdString(), whenDone(completion));
}

}  // namespace corvane::quick
