#include "demo/PageStyle.h"

namespace veltramoor {

std::string_view pageStyle() {
  return R"css(:root {
  --ink: #22303a;
  --soft: #5d6d78;
  --paper: #fbfaf7;
  --line: #dfdcd3;
  --accent: #1f6f78;
  --tint: #eef3f1;
}
* { box-sizing: border-box; }
html { font-size: 15px; }
body {
  margin: 0;
  color: var(--ink);
  background: var(--paper);
  font-family: "Liberation Sans", "DejaVu Sans", Arial, sans-serif;
  line-height: 1.45;
}
a { color: var(--accent); text-decoration: none; }
a:hover, a:focus { text-decoration: underline; }
header#header { background: #fff; border-bottom: 1px solid var(--line); padding: 14px 24px 0; }
.brand { font-size: 1.5rem; font-weight: bold; color: var(--ink); letter-spacing: -0.01em; }
.brand small { font-size: 0.8rem; font-weight: normal; color: var(--soft); }
form#q { display: flex; flex-wrap: wrap; gap: 8px; margin: 12px 0; max-width: 640px; }
form#q input[type=search] { flex: 1 1 220px; }
input, select, button, textarea {
  font: inherit;
  color: inherit;
  padding: 7px 10px;
  border: 1px solid #c3c6bf;
  border-radius: 5px;
  background: #fff;
}
button, input[type=submit] {
  background: var(--accent);
  border-color: var(--accent);
  color: #fff;
  cursor: pointer;
}
nav.menu { display: flex; flex-wrap: wrap; gap: 2px; margin: 0 -10px; }
nav.menu a { padding: 8px 10px; border-bottom: 3px solid transparent; }
nav.menu a:hover, nav.menu a:focus { border-color: var(--accent); text-decoration: none; }
main { display: block; max-width: 1080px; margin: 0 auto; padding: 18px 24px 30px; }
h1, h2 { font-weight: normal; line-height: 1.2; margin: 10px 0 14px; }
h1 { font-size: 1.6rem; }
h2 { font-size: 1.25rem; }
table#searchResult { width: 100%; border-collapse: collapse; background: #fff; }
#searchResult th {
  text-align: left;
  font-size: 0.85rem;
  color: var(--soft);
  padding: 8px;
  border-bottom: 2px solid var(--line);
}
#searchResult td { padding: 8px; border-bottom: 1px solid var(--line); vertical-align: top; }
#searchResult tbody tr:nth-child(even) { background: var(--tint); }
#searchResult tbody tr:hover { background: #e3edea; }
td.vertTh { width: 130px; font-size: 0.85rem; color: var(--soft); }
td[align=right] { width: 70px; font-variant-numeric: tabular-nums; }
.detName { overflow-wrap: anywhere; }
.detLink { font-weight: bold; }
.detDesc { font-size: 0.85rem; color: var(--soft); }
.pages { display: flex; flex-wrap: wrap; gap: 4px; margin: 16px 0; }
.pages a, .pages b { padding: 4px 9px; border: 1px solid var(--line); border-radius: 4px; }
.pages b { background: var(--accent); color: #fff; }
.spons-link, .download, .pop {
  width: calc(100% - 48px);
  max-width: 1032px;
  margin: 10px auto;
  padding: 8px 12px;
  border: 1px dashed #d2a94a;
  background: #fff8e6;
  font-size: 0.85rem;
}
main .spons-link, main .download, main .pop { width: auto; }
#searchResult th.count { text-align: right; }
#searchResult th abbr { text-decoration: none; }
.premium { display: inline-block; padding: 6px 12px; background: #f4e3b5; border-radius: 4px; }
#detailsframe { background: #fff; border: 1px solid var(--line); border-radius: 6px; padding: 18px; }
#detailsframe #title { font-size: 1.3rem; margin-bottom: 12px; overflow-wrap: anywhere; }
dl.facts { display: grid; grid-template-columns: max-content 1fr; gap: 5px 16px; margin: 0 0 14px; }
dl.facts dt { color: var(--soft); }
dl.facts dd { margin: 0; overflow-wrap: anywhere; }
.nfo pre { white-space: pre-wrap; background: var(--tint); padding: 14px; border-radius: 5px; }
#comments p { border-top: 1px solid var(--line); margin: 0; padding: 10px 0; }
.tiles { display: grid; grid-template-columns: repeat(auto-fill, minmax(220px, 1fr)); gap: 12px; }
.tile { background: #fff; border: 1px solid var(--line); border-radius: 6px; padding: 12px 14px; }
.tile li { margin: 5px 0; }
.tile ul { list-style: none; margin: 6px 0 0; padding: 0; }
.settings td { padding: 5px 14px 5px 0; }
form[name=loginform] { display: grid; gap: 10px; max-width: 340px; }
.error { color: #9b2c1f; font-weight: bold; }
#foot {
  border-top: 1px solid var(--line);
  padding: 16px 24px 30px;
  font-size: 0.82rem;
  color: var(--soft);
  text-align: center;
}
#foot .categories a { display: inline-block; padding: 2px 6px; }
@media (max-width: 600px) {
  header#header { padding: 10px 12px 0; }
  main { padding: 12px; }
  td.vertTh { width: 70px; }
  td[align=right] { width: 44px; }
}
)css";
}

std::string_view pageScript() {
  return R"js(// Keeps the search words and the chosen category between pages.
(function () {
  'use strict';
  var key = 'openindex.search';
  function stored() {
    try {
      return JSON.parse(window.sessionStorage.getItem(key) || '{}');
    } catch (e) {
      return {};
    }
  }
  function store(value) {
    try {
      window.sessionStorage.setItem(key, JSON.stringify(value));
    } catch (e) {
      // Private windows have no storage; the form then starts empty.
    }
  }
  document.addEventListener('DOMContentLoaded', function () {
    var form = document.getElementById('q');
    if (!form) {
      return;
    }
    var last = stored();
    if (last.category) {
      form.elements.category.value = last.category;
    }
    form.addEventListener('submit', function () {
      store({ q: form.elements.q.value, category: form.elements.category.value });
    });
    document.addEventListener('keydown', function (event) {
      var tag = (event.target.tagName || '').toLowerCase();
      if (event.key === '/' && tag !== 'input' && tag !== 'textarea') {
        event.preventDefault();
        form.elements.q.focus();
      }
    });
  });
})();
)js";
}

}  // namespace veltramoor
