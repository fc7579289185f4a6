// The style sheet of the status pages: light and dark, for wide and narrow screens, and for paper.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/style_sheet.h"

namespace quelm::device {

const char* const styleSheet = R"css(:root {
  color-scheme: light dark;
  --ground: #f4f6f8; --card: #ffffff; --ink: #1b1f24; --soft: #59636e; --line: #d5dbe1;
  --accent: #174d78; --on-accent: #ffffff; --link: #0b5394;
  --good: #14613a; --good-ground: #dcf1e4; --bad: #8f1d18; --bad-ground: #fbe3e1;
  --busy: #7a4b00; --busy-ground: #fdefcf; --quiet: #4a545e; --quiet-ground: #e7ebef;
}
@media (prefers-color-scheme: dark) {
  :root {
    --ground: #14181d; --card: #1d232a; --ink: #e6eaee; --soft: #a3afba; --line: #36404a;
    --accent: #1d3f5c; --on-accent: #ffffff; --link: #8cc4f5;
    --good: #9fe0b9; --good-ground: #163b28; --bad: #ffb4ad; --bad-ground: #4d1c19;
    --busy: #ffd78a; --busy-ground: #463309; --quiet: #c0cad3; --quiet-ground: #303942;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0; background: var(--ground); color: var(--ink);
  font: 16px/1.5 "Noto Sans", "Segoe UI", "Nimbus Sans", "DejaVu Sans", sans-serif;
}
a { color: var(--link); }
:focus-visible { outline: 3px solid var(--link); outline-offset: 2px; }
.skip { position: absolute; left: -100rem; }
.skip:focus { left: 1rem; top: 0.5rem; background: var(--card); padding: 0.5rem 1rem; }
header {
  background: var(--accent); color: var(--on-accent); padding: 0.75rem 1.5rem;
  display: flex; flex-wrap: wrap; gap: 0.25rem 2.5rem; align-items: baseline;
}
header a { color: inherit; }
header :focus-visible { outline-color: var(--on-accent); }
.brand { margin: 0; font-size: 1.2rem; font-weight: 700; }
.brand a { text-decoration: none; }
nav ul { list-style: none; margin: 0; padding: 0; display: flex; flex-wrap: wrap; gap: 0.25rem 1.25rem; }
header nav a { text-decoration: none; padding: 0.25rem 0; border-bottom: 2px solid transparent; }
header nav a:hover, header nav a[aria-current] { border-bottom-color: currentColor; }
main { max-width: 76rem; margin: 0 auto; padding: 0.5rem 1.5rem 3rem; }
h1 { font-size: 1.6rem; line-height: 1.25; margin: 1.25rem 0 1rem; overflow-wrap: anywhere; }
h2 { font-size: 1.1rem; margin: 2rem 0 0.6rem; }
.nothing { color: var(--soft); }
dl {
  display: grid; grid-template-columns: max-content 1fr; gap: 0.3rem 1.5rem; margin: 0 0 1rem;
  background: var(--card); border: 1px solid var(--line); border-radius: 8px; padding: 0.9rem 1.2rem;
}
dt { color: var(--soft); }
dd { margin: 0; overflow-wrap: anywhere; }
.wide { overflow-x: auto; background: var(--card); border: 1px solid var(--line); border-radius: 8px; }
table { border-collapse: collapse; width: 100%; font-size: 0.92rem; font-variant-numeric: tabular-nums; }
caption { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
th, td { text-align: start; vertical-align: top; padding: 0.5rem 0.8rem; border-bottom: 1px solid var(--line); }
th { color: var(--soft); font-weight: 600; white-space: nowrap; }
td { overflow-wrap: break-word; max-width: 24rem; }
td bdi { display: inline-block; max-width: 14rem; }
td bdi.title { min-width: 11rem; max-width: 24rem; }
td a bdi { text-decoration: underline; }
.unbroken { white-space: nowrap; }
tbody tr:last-child td { border-bottom: 0; }
.badge { border-radius: 1rem; padding: 0.1rem 0.65rem; font-size: 0.85rem; font-weight: 600; display: inline-block; }
.below { display: block; color: var(--soft); }
.badge.long { min-width: 11rem; border-radius: 0.6rem; }
.good { color: var(--good); background: var(--good-ground); }
.bad { color: var(--bad); background: var(--bad-ground); }
.busy { color: var(--busy); background: var(--busy-ground); }
.quiet { color: var(--quiet); background: var(--quiet-ground); }
progress { width: 9rem; vertical-align: middle; accent-color: var(--link); }
.gallery { list-style: none; margin: 0; padding: 0; display: flex; flex-wrap: wrap; gap: 1.25rem; }
figure { margin: 0; width: 160px; }
figcaption { color: var(--soft); font-size: 0.85rem; line-height: 1.35; margin-top: 0.4rem; overflow-wrap: anywhere; }
figcaption span { display: block; }
.page { display: block; background: #fff; border: 1px solid var(--line); box-shadow: 0 1px 4px rgb(0 0 0 / 18%); }
.page img { display: block; width: 100%; height: auto; min-height: 2rem; }
.more ul { margin-top: 1rem; }
@media (max-width: 40rem) {
  header, main { padding-left: 1rem; padding-right: 1rem; }
  dl { grid-template-columns: 1fr; gap: 0; }
  dd { margin-bottom: 0.5rem; }
}
@media print {
  header nav, .skip, .more { display: none; }
  body { background: #fff; }
}
)css";

} // namespace quelm::device
