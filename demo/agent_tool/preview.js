const tile = document.querySelector("#preview-tile");
const picture = document.querySelector("#preview-picture");
const message = document.querySelector("#preview-message");
const startButton = document.querySelector('button[data-action="startPreview"]');
const stopButton = document.querySelector('button[data-action="stopPreview"]');

const explanations = {
  NotAllowedError: "Camera and microphone were refused.",
  SecurityError: "Camera and microphone are blocked for this page.",
  NotFoundError: "No camera or microphone was found.",
  NotReadableError: "Camera or microphone is used by another program.",
};

let stream = null;
let attempt = 0;

function show(state, text) {
  tile.dataset.preview = state;
  message.textContent = text;
  startButton.hidden = state === "live" || state === "asking";
  stopButton.hidden = state !== "live";
}

function release(released) {
  for (const track of released.getTracks()) track.stop();
}

// Settles once the outcome is on the screen: with the stream that is shown, or with null.
export async function startPreview() {
  stopPreview();
  if (!navigator.mediaDevices?.getUserMedia) {
    show("failed", "Camera and microphone are not available here.");
    return null;
  }

  const thisAttempt = ++attempt;
  show("asking", "Asking for camera and microphone…");
  try {
    const granted = await navigator.mediaDevices.getUserMedia({ video: true, audio: true });
    // The answer may arrive after the call was ended; then nobody wants it.
    if (thisAttempt !== attempt) {
      release(granted);
      return null;
    }
    stream = granted;
    for (const track of granted.getTracks()) {
      track.addEventListener("ended", () => {
        if (stream === granted) stopPreview("Camera or microphone stopped.");
      });
    }
    picture.srcObject = granted;
    show("live", "");
    await picture.play();
    return granted;
  } catch (error) {
    if (thisAttempt !== attempt) return null;
    stopPreview();
    show("failed", explanations[error.name] ?? `The preview did not start (${error.name}).`);
    return null;
  }
}

export function stopPreview(text = "Camera is off.") {
  // Why there is no picture stays readable after the call.
  if (tile.dataset.preview === "failed") return;
  attempt += 1;
  if (stream) release(stream);
  stream = null;
  picture.srcObject = null;
  show("off", text);
}
