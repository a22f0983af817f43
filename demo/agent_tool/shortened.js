const mostCharacters = 120;

// For the eye only: what a host sends may be a megabyte long.
export function shortened(text, most = mostCharacters) {
  return text.length <= most ? text : `${text.slice(0, most)}… (${text.length} characters)`;
}
