#include "corvane/platform/engine/capture_question.h"

namespace corvane::engine {

namespace {

std::string deviceNames(WKMediaCaptureType type) {
  switch (type) {
    case WKMediaCaptureType::camera:
      return "camera";
    case WKMediaCaptureType::microphone:
      return "microphone";
    case WKMediaCaptureType::cameraAndMicrophone:
      return "camera and microphone";
  }
  return "";
}

}  // namespace

WKPermissionDecisionHandler makeDecisionHandler(WKMediaCaptureRequest request, CaptureAnswer answer,
                                                CaptureAsking ask) {
  return [request = std::move(request), answer = std::move(answer),
          ask = std::move(ask)](WKPermissionDecision decision) mutable {
    if (answer.isGiven()) return;
    if (decision != WKPermissionDecision::prompt) return answer(decision == WKPermissionDecision::grant);
    ask(request, [taken = std::move(answer)](bool isAllowed) mutable { taken(isAllowed); });
  };
}

std::string captureQuestion(const std::string& hostName, WKMediaCaptureType type) {
  return (hostName.empty() ? "This page" : hostName) + " would like to use your " + deviceNames(type) + ".";
}

}  // namespace corvane::engine
