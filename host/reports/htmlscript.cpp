#include "reports/htmlscript.h"

namespace panelhost {

QString reportScript()
{
    return QStringLiteral(R"js(
const search = document.getElementById("search");
search.addEventListener("input", () => {
  const wanted = search.value.toLowerCase();
  for (const row of document.querySelectorAll(".steps tr, .journal div"))
    row.hidden = wanted !== "" && !row.textContent.toLowerCase().includes(wanted);
  for (const group of document.querySelectorAll("details")) {
    if (group.dataset.wasOpen === undefined)
      group.dataset.wasOpen = group.open;
    group.open = wanted === "" ? group.dataset.wasOpen === "true"
      : group.querySelector("tr:not([hidden]), .journal div:not([hidden])") !== null;
  }
});
function reveal() {
  const target = location.hash && document.getElementById(location.hash.slice(1));
  for (let group = target; group; group = group.parentElement)
    if (group.tagName === "DETAILS")
      group.open = true;
  if (target)
    target.scrollIntoView({block: "center"});
}
addEventListener("hashchange", reveal);
document.addEventListener("click", (event) => {
  const moment = event.target.closest("button[data-moment]");
  if (!moment)
    return;
  const command = document.getElementById("command");
  document.getElementById("moment").hidden = false;
  command.value = moment.closest("[data-view]").dataset.view + " " + moment.dataset.moment;
  command.select();
  document.getElementById("copied").textContent = document.execCommand("copy") ? "copied" : "";
});
reveal();
)js");
}

}
