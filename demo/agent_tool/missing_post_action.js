// A classic script that must run before anything else of its document.
//
// The host gives every document its postAction at document end, as a global
// const, and nothing can take such a const away again. A document that has
// already declared a var of that name keeps its own value, though. The host's
// declaration is then an error and as a whole does nothing. So whoever wants a
// page without postAction leaves a note in the session and reloads the page.
//
// A var counts for its whole script, also from inside a condition that is not
// met. So the declaration gets a script element of its own.
if (sessionStorage.getItem("agentTool.postActionMissing") !== null) {
  const declaration = document.createElement("script");
  declaration.textContent = "var postAction = undefined;";
  document.head.append(declaration);
  declaration.remove();
}
