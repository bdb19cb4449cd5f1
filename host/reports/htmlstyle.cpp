#include "reports/htmlstyle.h"

#include <QtCore/QString>

namespace panelhost {

QString htmlStyle()
{
    return QStringLiteral(R"(
body { margin: 0; background: #f3f4f6; color: #1c2430; font: 15px/1.5 system-ui, sans-serif; }
main { max-width: 1160px; margin: 0 auto; padding: 32px 24px; }
section { margin: 32px 0; padding: 8px 24px 24px; background: #fff; border: 1px solid #dde1e7; border-radius: 8px; }
h1, h2, h3 { line-height: 1.25; }
h1 { margin: 0; }
h3 { margin: 24px 0 8px; font-size: 15px; color: #5a6577; }
table { width: 100%; border-collapse: collapse; }
.summary { background: #fff; border: 1px solid #dde1e7; }
th { text-align: left; font-weight: 600; color: #5a6577; }
th, td { padding: 4px 12px 4px 8px; border-bottom: 1px solid #eceff3; vertical-align: top; }
.number, .file { font-variant-numeric: tabular-nums; white-space: nowrap; color: #5a6577; }
a { color: #1f5fbf; }
code, pre { font: 13px/1.5 ui-monospace, DejaVu Sans Mono, monospace; overflow-wrap: anywhere; }
pre { overflow-x: auto; padding: 12px; background: #f6f7f9; border-radius: 6px; }
pre.failure { white-space: pre-wrap; background: #fdecea; }
.badge { margin-left: 8px; padding: 1px 10px; border-radius: 10px; font-size: 13px; font-weight: 600; }
td .badge { margin-left: 0; }
.badge.passed { color: #0d6b2c; background: #dcf3e3; }
.badge.running, .badge.interrupted { color: #7a4b00; background: #fdf0d5; }
.badge.failed { color: #a3180e; background: #fbdcd9; }
p.passed { color: #0d6b2c; }
p.failed, .outcome.failed, .found { color: #a3180e; }
.pages { display: flex; flex-wrap: wrap; gap: 4px; margin: 0; padding: 0; list-style: none; }
.pages li { flex-basis: 96px; min-width: 0; padding: 6px 8px; background: #e7eefb; border-radius: 4px; }
.pages span { display: block; overflow-wrap: anywhere; }
.time { font-size: 12px; color: #5a6577; font-variant-numeric: tabular-nums; }
.screens { display: grid; grid-template-columns: repeat(auto-fill, minmax(320px, 1fr)); gap: 16px; }
figure { margin: 0; }
img { width: 100%; height: auto; border-radius: 6px; }
figcaption { color: #5a6577; font-size: 13px; }
summary { margin-top: 24px; cursor: pointer; color: #1f5fbf; }
.search { position: sticky; top: 0; z-index: 1; padding: 12px 0; background: #f3f4f6; }
.search input { box-sizing: border-box; width: 100%; padding: 8px 12px; font: inherit; border: 1px solid #c4cbd6; border-radius: 6px; }
.steps button { padding: 0; border: 0; background: none; color: #1f5fbf; font: inherit; cursor: pointer; }
.steps button:hover, .steps button:focus-visible { text-decoration: underline; }
.moment { position: fixed; bottom: 0; left: 0; right: 0; z-index: 2; display: flex; gap: 12px; align-items: center; padding: 12px 24px; background: #1d2733; color: #ffffff; }
.moment input { flex: 1; padding: 8px 12px; font: 14px ui-monospace, DejaVu Sans Mono, monospace; border: 0; border-radius: 6px; }
.view code { user-select: all; overflow-wrap: anywhere; }
.failures { border-color: #e9a49e; }
.failures .screens { grid-template-columns: repeat(auto-fill, minmax(480px, 1fr)); }
.facts th { width: 1%; white-space: nowrap; }
.facts td { overflow-wrap: anywhere; }
.steps { margin: 0; }
.steps td:first-child, .steps td:nth-child(2) { width: 1%; }
.steps td:last-child { width: 1%; white-space: nowrap; text-align: right; }
.steps tr.failed { background: #fdecea; }
.rounds { margin: 4px 0; padding-left: 12px; border-left: 3px solid #dde1e7; }
.rounds summary { margin: 0; }
.journal { padding: 12px; background: #f6f7f9; border-radius: 6px; }
.journal div { font: 13px/1.5 ui-monospace, DejaVu Sans Mono, monospace; overflow-wrap: anywhere; }
:target { outline: 2px solid #1f5fbf; outline-offset: 2px; }
[hidden] { display: none; }
)");
}

}
