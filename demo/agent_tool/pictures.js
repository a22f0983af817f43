const svgNamespace = "http://www.w3.org/2000/svg";

function shape(path, attributes) {
  const element = document.createElementNS(svgNamespace, "path");
  element.setAttribute("d", path);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
  return element;
}

// The page's document holds the drawings that are used in many places.
export function icon(name) {
  const picture = document.createElementNS(svgNamespace, "svg");
  const use = document.createElementNS(svgNamespace, "use");
  use.setAttribute("href", `#icon-${name}`);
  picture.classList.add("icon");
  picture.setAttribute("aria-hidden", "true");
  picture.append(use);
  return picture;
}

function drawing({ background, colour, outline, detail }) {
  const picture = document.createElementNS(svgNamespace, "svg");
  picture.setAttribute("viewBox", "0 0 48 48");
  picture.setAttribute("aria-hidden", "true");
  picture.classList.add("product-picture");
  picture.style.background = background;
  picture.append(
    shape(outline, { fill: colour, stroke: colour, "stroke-width": 2, "stroke-linejoin": "round" }),
    shape(detail, { fill: "none", stroke: background, "stroke-width": 1.5, "stroke-linecap": "round" }),
  );
  return picture;
}

const addressesThatFailed = new Set();

// The rows are made anew on every change; what did not load is not tried again.
function loadInPlaceOf(tile, address) {
  if (!/^https?:\/\//i.test(address) || addressesThatFailed.has(address)) return;
  const picture = document.createElement("img");
  picture.className = "product-picture";
  picture.alt = "";
  picture.referrerPolicy = "no-referrer";
  picture.addEventListener("load", () => tile.replaceWith(picture));
  picture.addEventListener("error", () => addressesThatFailed.add(address));
  picture.src = address;
}

// The product's name stands beside the picture, so readers skip the picture. A
// product that a host describes has a letter until its own picture has loaded.
export function productPicture({ picture, name, imageUrl }) {
  if (picture) return drawing(picture);
  const tile = document.createElement("span");
  tile.className = "product-picture letter";
  tile.setAttribute("aria-hidden", "true");
  tile.textContent = [...name.slice(0, 2)].slice(0, 1).join("").toUpperCase();
  if (imageUrl !== undefined) loadInPlaceOf(tile, imageUrl);
  return tile;
}
