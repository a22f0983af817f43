#include "corvane/platform/qt/qt_page_capture.h"

#include <QRandomGenerator>
#include <QStringList>
#include <QtWebEngineCore/QWebEngineScript>
#include <algorithm>

namespace corvane::qt {

namespace {

/// Pages find their functions as they were, and each track as they left it: one that is muted by the host still says
/// what the page wants of it.
const char* const followingSource = R"js((() => {
  const introduction = "%1", command = "%2", say = console.debug.bind(console);
  const devices = window.MediaDevices?.prototype, track = window.MediaStreamTrack?.prototype;
  if (!devices || !track) return;
  const frame = Math.random().toString(36).slice(2);
  const enabled = Object.getOwnPropertyDescriptor(track, "enabled");
  const open = new Map(), isMuted = { audio: false, video: false };
  let told = "00";
  const stateOf = (kind) => {
    const isOpen = [...open.keys()].some((each) => each.kind === kind);
    if (!isOpen) isMuted[kind] = false;
    return isOpen ? (isMuted[kind] ? "2" : "1") : "0";
  };
  const tell = () => {
    const now = stateOf("video") + stateOf("audio");
    if (now !== told) say(introduction + frame + " " + (told = now));
  };
  const apply = (each) => enabled.set.call(each, open.get(each) && !isMuted[each.kind]);
  const forget = (each) => { if (open.delete(each)) tell(); };
  const follow = (each) => {
    open.set(each, enabled.get.call(each));
    apply(each);
    each.addEventListener("ended", () => forget(each));
    tell();
    return each;
  };
  const replace = (owner, name, make) => {
    const before = owner?.[name];
    if (typeof before === "function") owner[name] = { [name](...given) { return make(this, before, given); } }[name];
  };
  const take = (stream) => { stream.getTracks().forEach(follow); return stream; };
  replace(devices, "getUserMedia", (self, before, given) => before.apply(self, given).then(take));
  replace(Navigator.prototype, "webkitGetUserMedia", (self, before, [wishes, done, failed]) =>
    before.call(self, wishes, (stream) => done(take(stream)), failed));
  replace(track, "stop", (self, before) => { before.call(self); forget(self); });
  replace(track, "clone", (self, before) => {
    const copy = before.call(self);
    return open.has(self) ? follow(copy) : copy;
  });
  replace(window.MediaStream?.prototype, "clone", (self, before) => {
    const followed = self.getTracks().filter((each) => open.has(each)).map((each) => each.kind);
    const copy = before.call(self);
    copy.getTracks().filter((each) => followed.includes(each.kind)).forEach(follow);
    return copy;
  });
  Object.defineProperty(track, "enabled", {
    ...enabled,
    get() { return open.has(this) ? open.get(this) : enabled.get.call(this); },
    set(value) {
      if (!open.has(this)) return enabled.set.call(this, value);
      open.set(this, Boolean(value));
      apply(this);
    },
  });
  addEventListener("message", (event) => {
    if (typeof event.data !== "string" || !event.data.startsWith(command)) return;
    event.stopImmediatePropagation();
    const [kind, wish] = event.data.slice(command.length).split(" ");
    isMuted[kind] = wish === "1";
    for (const each of open.keys()) apply(each);
    tell();
  }, true);
  addEventListener("pagehide", () => { open.clear(); tell(); });
})();)js";

/// Run apart from the page's scripts, which so cannot learn the command.
const char* const mutingSource = R"js((() => {
  const visit = (frame) => {
    frame.postMessage("%1", "*");
    for (let index = 0; index < frame.length; ++index) visit(frame[index]);
  };
  visit(window);
})();)js";

CaptureState stateOf(QChar sign) {
  if (sign == QLatin1Char('0')) return CaptureState::none;
  return sign == QLatin1Char('2') ? CaptureState::muted : CaptureState::active;
}

}  // namespace

PageCapture::PageCapture(QWebEnginePage& page, std::weak_ptr<WebEngineClient> client)
    : page_(&page),
      client_(std::move(client)),
      command_(QString::number(QRandomGenerator::system()->generate64(), 16) + QLatin1Char(' ')) {}

QString PageCapture::script(const QString& introduction) const {
  return QString::fromLatin1(followingSource).arg(introduction, command_);
}

void PageCapture::frameChanged(const QString& change) {
  const QStringList parts = change.split(QLatin1Char(' '));
  if (parts.size() != 2 || parts[1].size() != 2) return;
  const Frame frame{stateOf(parts[1][0]), stateOf(parts[1][1])};
  if (frame.video == CaptureState::none && frame.audio == CaptureState::none) {
    frames_.erase(parts[0]);
  } else {
    frames_[parts[0]] = frame;
  }
  tell();
}

void PageCapture::clear() {
  frames_.clear();
  tell();
}

CaptureState PageCapture::state(AVMediaType mediaType) const {
  const auto has = [&](CaptureState state) {
    return std::ranges::any_of(frames_, [&](const auto& frame) {
      return (mediaType == AVMediaType::video ? frame.second.video : frame.second.audio) == state;
    });
  };
  if (has(CaptureState::active)) return CaptureState::active;
  return has(CaptureState::muted) ? CaptureState::muted : CaptureState::none;
}

void PageCapture::setMuted(AVMediaType mediaType, bool isMuted) {
  if (state(mediaType) == CaptureState::none) return;
  const QString kind = mediaType == AVMediaType::video ? QStringLiteral("video ") : QStringLiteral("audio ");
  page_->runJavaScript(QString::fromLatin1(mutingSource).arg(command_ + kind + QLatin1Char(isMuted ? '1' : '0')),
                       QWebEngineScript::ApplicationWorld);
}

void PageCapture::tell() {
  const std::pair now{state(AVMediaType::video), state(AVMediaType::audio)};
  if (std::exchange(told_, now) == now) return;
  if (const auto client = client_.lock()) client->engineDidChangeCapture();
}

}  // namespace corvane::qt
