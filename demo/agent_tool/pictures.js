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

// The product's name stands beside the picture, so readers skip the picture.
export function productPicture({ background, colour, outline, detail }) {
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
