const picture = document.querySelector("#customer-picture");
const notice = document.querySelector("#call-notice");
const muteLabel = document.querySelector("#mute-label");

export async function showCustomer(stream) {
  picture.hidden = stream === null;
  if (picture.srcObject === stream) return;
  picture.srcObject = stream;
  // Until somebody has clicked, a page may be kept from playing sound.
  if (stream) await picture.play().catch(() => {});
}

export function showMuted(isMuted) {
  muteLabel.textContent = isMuted ? "Unmute" : "Mute";
}

export function showNotice(text) {
  notice.hidden = false;
  notice.textContent = text;
}
