#pragma once

namespace quintara::chartbook {

/// How the page looks: light and dark, on a phone, on a desk, on paper.
inline constexpr const char* kPageStyle = R"(
:root { color-scheme: light dark; --ink: #1c1c1c; --paper: #ffffff; --soft: #555555;
  --line: #c4c4c4; --link: #0b4fb3; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e8e8e8; --paper: #141414; --soft: #b0b0b0; --line: #4a4a4a; --link: #8fbaff; }
}
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1rem; max-width: 90rem; color: var(--ink);
  background: var(--paper); font: 1rem/1.5 system-ui, sans-serif; overflow-wrap: anywhere; }
h1 { font-size: 1.5rem; margin: 0; }
h2 { font-size: 1.25rem; margin: 0; }
a { color: var(--link); }
:focus-visible { outline: 3px solid var(--link); outline-offset: 2px; }
.skip { position: absolute; left: -100rem; }
.skip:focus { position: static; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; padding: 0; list-style: none; }
nav a { display: inline-block; min-height: 1.5rem; }
article { margin: 2rem 0; padding-top: 1rem; border-top: 1px solid var(--line); }
article p { margin: .25rem 0 .75rem; }
.soft, footer { color: var(--soft); }
.chart { display: grid; gap: 1rem; align-items: start; }
.chart img { display: block; max-width: 100%; height: auto; }
table { border-collapse: collapse; font-variant-numeric: tabular-nums; }
caption { text-align: left; font-weight: 600; }
th, td { padding: .1rem .75rem .1rem 0; text-align: right; border-bottom: 1px solid var(--line); }
th:first-child { text-align: left; font-weight: inherit; }
thead th:first-child, .close th, .close { font-weight: 600; }
.A1, .A2, .A3, .A4 { display: inline-block; width: .8em; height: .8em; margin-right: .5em;
  border: 1px solid var(--soft); }
.A1 { background: #ff0000; } .A2 { background: #0000ff; }
.A3 { background: #ff00ff; } .A4 { background: #ffff00; }
@media (min-width: 60rem) { .chart { grid-template-columns: minmax(0, auto) max-content;
  justify-content: start; } }
@media print {
  :root { --ink: #000000; --paper: #ffffff; --soft: #333333; --line: #888888; --link: #000000; }
  nav, .skip { display: none; }
  article { break-inside: avoid; }
  .A1, .A2, .A3, .A4 { print-color-adjust: exact; }
}
)";

}  // namespace quintara::chartbook
