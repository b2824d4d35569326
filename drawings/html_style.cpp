// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/html_p.h"

namespace drawings {

const char page_style[] = R"(
:root {
  color-scheme: light;
  --ink: #1b2430; --soft: #566273; --rule: #d7dde5; --shade: #f3f6f9; --accent: #1f4e8c;
  font: 14px/1.45 system-ui, -apple-system, "Segoe UI", Roboto, "DejaVu Sans", sans-serif;
  color: var(--ink); background: #fff;
}
body { margin: 0 auto; max-width: 104rem; padding: 1.5rem clamp(.75rem, 2.5vw, 2.5rem) 3rem; }
h1 { font-size: 1.7rem; line-height: 1.2; margin: 0; font-weight: 650; }
header p, footer { color: var(--soft); margin: .3rem 0 0; }
footer { margin-top: 1.5rem; font-size: .85rem; }
button { font: inherit; color: inherit; background: none; border: 0; padding: 0; }
button:enabled { cursor: pointer; }
:focus-visible { outline: 2px solid var(--accent); outline-offset: 2px; }

.facts { display: flex; flex-wrap: wrap; gap: .6rem; margin: 1.25rem 0; }
.facts div {
  display: flex; flex-direction: column-reverse; justify-content: flex-end;
  min-width: 6.5rem; padding: .55rem .9rem .6rem;
  border: 1px solid var(--rule); border-top: 4px solid var(--tone, #8792a2); border-radius: 4px;
}
.facts dt { color: var(--soft); font-size: .85rem; overflow-wrap: anywhere; }
.facts div { max-width: 20rem; }
.facts dd { margin: 0; font-size: 1.45rem; font-weight: 600; font-variant-numeric: tabular-nums; }
.facts button:enabled { text-decoration: underline dotted var(--soft) 1px; text-underline-offset: .2em; }
.facts button[aria-pressed=true] { background: var(--ink); color: #fff; padding: 0 .4em; border-radius: 3px; }
.good { --tone: #1f7a45; --fill: #e3f3e8; --text: #14532d; }
.odd { --tone: #b7791f; --fill: #fcf0d4; --text: #6b4400; }
.open { --tone: #2b6cb0; --fill: #e2edf9; --text: #1a4272; }
.bad { --tone: #b42318; --fill: #fbe5e3; --text: #8a1c13; }
.tag {
  display: inline-block; padding: .05rem .55rem; border-radius: 1rem; white-space: nowrap;
  font-size: .87rem; font-weight: 600;
  color: var(--text, var(--ink)); background: var(--fill, #e9edf2);
}

.key { display: flex; flex-wrap: wrap; gap: .2rem .9rem; color: var(--soft); font-size: .87rem; }
.key > span { font-weight: 600; }
.legend { list-style: none; display: inline-flex; flex-wrap: wrap; gap: .2rem 1rem; margin: 0; padding: 0; }
.legend svg { width: 2rem; height: .75rem; margin-right: .4rem; vertical-align: middle; }
.find { margin-top: 1rem; }
.find label { font-weight: 600; margin-right: .5rem; }
.find input {
  font: inherit; width: min(22rem, 100%); padding: .35rem .6rem; box-sizing: border-box;
  border: 1px solid #8792a2; border-radius: 4px; background: #fff; color: inherit;
}
#count { color: var(--soft); margin: .5rem 0; font-size: .9rem; }
[hidden] { display: none !important; }

.scroll { overflow-x: auto; border: 1px solid var(--rule); border-radius: 4px; }
table { border-collapse: collapse; width: 100%; }
th, td { padding: .4rem .5rem; text-align: left; vertical-align: middle; border-bottom: 1px solid var(--rule); }
tbody tr:last-child > * { border-bottom: 0; }
tbody tr:hover { background: var(--shade); }
thead th {
  background: var(--shade); font-size: .87rem; font-weight: 600; vertical-align: bottom;
  border-bottom: 2px solid #b9c3cf; white-space: normal !important;
}
thead button { font-weight: 600; text-align: inherit; }
thead button:enabled::after { content: "\a0\2195"; color: #6f7b8b; }
thead [aria-sort=ascending] button::after { content: "\a0\2191"; color: var(--ink); }
thead [aria-sort=descending] button::after { content: "\a0\2193"; color: var(--ink); }
tbody th { font-weight: 600; min-width: 11.5rem; overflow-wrap: anywhere; white-space: pre-wrap; }
.dir { font-weight: 400; font-size: .87rem; color: var(--soft); }
.num { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
.pic, .pic button { width: 9.5rem; }
.pic button { display: block; border-radius: 3px; }
.pic button:enabled:hover { background: #e6ecf3; }
.pic svg { display: block; width: 100%; max-height: 4.5rem; }
.found { min-width: 13rem; font-size: .9rem; color: #3a4656; overflow-wrap: anywhere; }
.found ul, #large-found ul { margin: 0; padding-left: 1.1em; }
.found li:only-child, #large-found li:only-child { list-style: none; margin-left: -1.1em; }

path { fill: none; stroke-width: 1.3; vector-effect: non-scaling-stroke; stroke-linejoin: round; stroke-linecap: round; }
.o, .u { stroke: #1b2430; }
.t { stroke: #1d4fb8; stroke-width: 2.2; }
.s { stroke: #c01616; stroke-width: 1; }
.w { stroke: #1b2430; stroke-dasharray: 1 3; stroke-width: 1.6; }
.a { stroke: #9aa5b3; stroke-width: .8; }
.m { stroke: #6f7b8b; stroke-width: .8; stroke-dasharray: 5 3; }

dialog { width: min(76rem, 94vw); max-height: 92vh; box-sizing: border-box; padding: 1rem 1.4rem 1.3rem; border: 1px solid #8792a2; border-radius: 6px; color: inherit; }
dialog::backdrop { background: rgb(20 28 40 / 55%); }
.bar { display: flex; flex-wrap: wrap; align-items: center; gap: .5rem; }
.bar h2 { flex: 1 1 12rem; font-size: 1.15rem; margin: 0; overflow-wrap: anywhere; white-space: pre-wrap; }
.bar button { padding: .3rem .8rem; border: 1px solid #8792a2; border-radius: 4px; }
.bar button:disabled { color: #8792a2; border-color: var(--rule); }
.bar button:enabled:hover { background: var(--shade); }
figure { margin: 1rem 0 0; }
.paper { border: 1px solid var(--rule); padding: .5rem; }
.paper svg { display: block; width: 100%; max-height: 55vh; }
.paper .t { stroke-width: 3.5; }
.paper .s { stroke-width: 1.3; }
figcaption { color: var(--soft); font-size: .87rem; margin-top: .35rem; display: flex; flex-wrap: wrap; gap: .2rem 1.2rem; }
#large-values { display: flex; flex-wrap: wrap; gap: .3rem 1.8rem; margin: 1rem 0; }
#large-values dt { color: var(--soft); font-size: .85rem; }
#large-values dd { margin: 0; font-variant-numeric: tabular-nums; }

@media (max-width: 40rem) {
  h1 { font-size: 1.35rem; }
  .facts { display: grid; grid-template-columns: repeat(auto-fill, minmax(6.2rem, 1fr)); }
  .facts div { min-width: 0; padding: .4rem .6rem; }
  .facts dd { font-size: 1.2rem; }
  .pic, .pic button { width: 6rem; }
  tbody th { min-width: 9rem; }
  th, td { padding: .35rem .5rem; }
}

@page { size: landscape; margin: 12mm 12mm 14mm; @bottom-right { content: counter(page) " / " counter(pages); font: 8pt sans-serif; color: #566273; } }
@media print {
  :root { font-size: 8.5pt; -webkit-print-color-adjust: exact; print-color-adjust: exact; }
  body { padding: 0; max-width: none; }
  .find, dialog { display: none; }
  .scroll { overflow: visible; border: 0; }
  thead { display: table-header-group; }
  thead button { display: contents; }
  thead button::after { content: none !important; }
  tr, .facts div { break-inside: avoid; }
  h1, .facts, .key, #count { break-after: avoid; }
  .facts button { text-decoration: none !important; }
  .tag { border: 1px solid currentColor; }
  th, td { padding: .25rem .4rem; }
  .pic, .pic button { width: 30mm; }
  .pic path { stroke-width: .8; }
  .pic .t { stroke-width: 1.5; }
  .pic .s { stroke-width: .6; }
  .pic svg { max-height: 13mm; }
  tbody th { min-width: 40mm; }
  .found { min-width: 44mm; font-size: 7.5pt; }
}
)";

} // namespace drawings
