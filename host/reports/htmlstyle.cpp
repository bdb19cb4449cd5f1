#include "reports/htmlstyle.h"

#include <QtCore/QString>

namespace panelhost {

QString htmlStyle()
{
    return QStringLiteral(R"(
:root { color-scheme: light dark;
    --ground: #f3f4f6; --text: #1c2430; --card: #ffffff; --edge: #dde1e7; --dim: #5a6577; --line: #eceff3;
    --link: #1f5fbf; --soft: #f6f7f9; --passed: #0d6b2c; --passed-ground: #dcf3e3; --running: #7a4b00;
    --running-ground: #fdf0d5; --failed: #a3180e; --failed-ground: #fbdcd9; --failed-soft: #fdecea;
    --failed-edge: #e9a49e; --field-edge: #c4cbd6; --page: #e7eefb; }
@media (prefers-color-scheme: dark) { :root {
    --ground: #12161b; --text: #e3e8ee; --card: #1b2129; --edge: #333c47; --dim: #9aa6b5; --line: #29313b;
    --link: #7db4ff; --soft: #141920; --passed: #5fd68a; --passed-ground: #12341f; --running: #f2bd62;
    --running-ground: #3a2a0c; --failed: #ff8a80; --failed-ground: #431a17; --failed-soft: #2e1716;
    --failed-edge: #7a3530; --field-edge: #465160; --page: #1d2a3f; } }
body { margin: 0; background: var(--ground); color: var(--text); font: 15px/1.5 system-ui, sans-serif; }
main { max-width: 1160px; margin: 0 auto; padding: 32px 24px; }
section { margin: 32px 0; padding: 8px 24px 24px; background: var(--card); border: 1px solid var(--edge); border-radius: 8px; }
h1, h2, h3 { line-height: 1.25; }
h1 { margin: 0; }
h3 { margin: 24px 0 8px; font-size: 15px; color: var(--dim); }
table { width: 100%; border-collapse: collapse; }
.summary { background: var(--card); border: 1px solid var(--edge); }
th { text-align: left; font-weight: 600; color: var(--dim); }
th, td { padding: 4px 12px 4px 8px; border-bottom: 1px solid var(--line); vertical-align: top; }
.number { font-variant-numeric: tabular-nums; white-space: nowrap; color: var(--dim); }
.file { min-width: 160px; overflow-wrap: anywhere; color: var(--dim); }
.summary a, h2 { overflow-wrap: anywhere; }
a { color: var(--link); }
code, pre { font: 13px/1.5 ui-monospace, DejaVu Sans Mono, monospace; overflow-wrap: anywhere; }
pre { overflow-x: auto; padding: 12px; background: var(--soft); border-radius: 6px; }
pre.failure { white-space: pre-wrap; background: var(--failed-soft); }
.badge { margin-left: 8px; padding: 1px 10px; border-radius: 10px; font-size: 13px; font-weight: 600; }
td .badge { margin-left: 0; }
.badge.passed { color: var(--passed); background: var(--passed-ground); }
.badge.running, .badge.interrupted { color: var(--running); background: var(--running-ground); }
.badge.failed { color: var(--failed); background: var(--failed-ground); }
p.passed { color: var(--passed); }
p.failed, .outcome.failed, .found { color: var(--failed); }
.pages { display: flex; flex-wrap: wrap; gap: 4px; margin: 0; padding: 0; list-style: none; }
.pages li { flex-basis: 96px; min-width: 0; padding: 6px 8px; background: var(--page); border-radius: 4px; }
.pages span { display: block; overflow-wrap: anywhere; }
.time { font-size: 12px; color: var(--dim); font-variant-numeric: tabular-nums; }
.screens { display: grid; grid-template-columns: repeat(auto-fill, minmax(320px, 1fr)); gap: 16px; }
figure { margin: 0; }
img { width: 100%; height: auto; border-radius: 6px; }
figcaption { color: var(--dim); font-size: 13px; }
summary { margin-top: 24px; cursor: pointer; color: var(--link); }
.search { position: sticky; top: 0; z-index: 1; padding: 12px 0; background: var(--ground); }
.search input { box-sizing: border-box; width: 100%; padding: 8px 12px; font: inherit; border: 1px solid var(--field-edge); border-radius: 6px; }
.steps button { padding: 0; border: 0; background: none; color: var(--link); font: inherit; cursor: pointer; }
.steps button:hover, .steps button:focus-visible { text-decoration: underline; }
.moment { position: fixed; bottom: 0; left: 0; right: 0; z-index: 2; display: flex; gap: 12px; align-items: center; padding: 12px 24px; background: #1d2733; color: #ffffff; }
.moment input { flex: 1; padding: 8px 12px; font: 14px ui-monospace, DejaVu Sans Mono, monospace; border: 0; border-radius: 6px; }
.view code { user-select: all; overflow-wrap: anywhere; }
.failures { border-color: var(--failed-edge); }
.failures .screens { grid-template-columns: repeat(auto-fill, minmax(480px, 1fr)); }
.facts th { width: 1%; white-space: nowrap; }
.facts td { overflow-wrap: anywhere; }
.steps { margin: 0; }
.steps td:first-child, .steps td:nth-child(2) { width: 1%; }
.steps td:last-child { width: 1%; white-space: nowrap; text-align: right; }
.steps .place { min-width: 140px; max-width: 280px; white-space: normal; overflow-wrap: anywhere; }
.not-played td:last-child { width: auto; white-space: normal; text-align: left; overflow-wrap: anywhere; }
.steps tr.failed { background: var(--failed-soft); }
.rounds { margin: 4px 0; padding-left: 12px; border-left: 3px solid var(--edge); }
.rounds summary { margin: 0; }
.journal { padding: 12px; background: var(--soft); border-radius: 6px; }
.journal div { font: 13px/1.5 ui-monospace, DejaVu Sans Mono, monospace; overflow-wrap: anywhere; }
:target { outline: 2px solid var(--link); outline-offset: 2px; }
[hidden] { display: none; }
)");
}

}
