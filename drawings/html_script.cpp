// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/html_p.h"

namespace drawings {

// Sorts and filters the rows and enlarges the pictures. Texts are set by textContent only.
const char page_script[] = R"(
'use strict';
(() => {
const table = document.getElementById('files');
const body = table.tBodies[0];
const inOrder = [...body.rows];
const heads = [...table.tHead.rows[0].cells];
const all = (selector) => [...document.querySelectorAll(selector)];
for (const button of all('button')) button.disabled = false;
document.querySelector('.find').hidden = false;

// Sorting: numbers by value, texts in natural order; empty cells stay last.
const collator = new Intl.Collator('en', { numeric: true });
const keyOf = (row, column) => {
  const cell = row.cells[column];
  if (cell.dataset.v !== undefined) return Number(cell.dataset.v);
  return cell.textContent === '' ? null : cell.textContent;
};
const compare = (a, b) =>
  typeof a === 'number' && typeof b === 'number' ? a - b : collator.compare(String(a), String(b));
const nextOrder = { none: 'ascending', ascending: 'descending', descending: 'none' };
const sortBy = (column) => {
  const order = nextOrder[heads[column].getAttribute('aria-sort')];
  for (const head of heads) if (head.hasAttribute('aria-sort')) head.setAttribute('aria-sort', 'none');
  heads[column].setAttribute('aria-sort', order);
  const sign = order === 'descending' ? -1 : 1;
  const keyed = inOrder.map((row) => ({ row, key: keyOf(row, column) }));
  if (order !== 'none')
    keyed.sort((a, b) => a.key === null || b.key === null
      ? (a.key === null) - (b.key === null) : sign * compare(a.key, b.key));
  body.append(...keyed.map((entry) => entry.row));
};
heads.forEach((head, column) => {
  const button = head.querySelector('button');
  if (button) button.addEventListener('click', () => sortBy(column));
});

// Filtering: every word must occur in the row; a figure of the summary shows its files.
const find = document.getElementById('find');
const count = document.getElementById('count');
const states = all('.facts button');
const tagOf = (row) => row.querySelector('.tag').textContent;
const texts = new Map(inOrder.map((row) => [row,
  [row.querySelector('th'), row.querySelector('.tag'), row.querySelector('.found')]
    .map((cell) => cell.textContent).join(' ').toLowerCase()]));
const plural = (n) => n + (n === 1 ? ' file' : ' files');
const filter = () => {
  const words = find.value.toLowerCase().split(/\s+/).filter((word) => word);
  const pressed = states.find((button) => button.getAttribute('aria-pressed') === 'true');
  const state = pressed && pressed.dataset.state;
  let left = 0;
  for (const row of inOrder) {
    const fits = (!state || tagOf(row) === state) && words.every((word) => texts.get(row).includes(word));
    row.hidden = !fits;
    if (fits) left += 1;
  }
  const asked = [state, find.value.trim()].filter((text) => text).join(', ');
  count.textContent = !asked ? plural(left)
    : (left ? left + ' of ' : 'None of ') + plural(inOrder.length) + ': ' + asked;
};
find.addEventListener('input', filter);
for (const button of states)
  button.addEventListener('click', () => {
    const was = button.getAttribute('aria-pressed') === 'true';
    for (const other of states) other.setAttribute('aria-pressed', String(other === button && !was));
    filter();
  });

// Enlarging: a copy of the pictures of a row and of its figures.
const large = document.getElementById('large');
const before = document.getElementById('before');
const after = document.getElementById('after');
let shown = null;
const neighbour = (row, step) => {
  let next = row;
  do next = next[step]; while (next && (next.hidden || !next.querySelector('.pic svg')));
  return next;
};
const show = (row) => {
  shown = row;
  document.getElementById('large-name').textContent = row.querySelector('th').textContent;
  const figures = [...large.querySelectorAll('figure')];
  [...row.querySelectorAll('.pic')].forEach((cell, i) => {
    const picture = cell.querySelector('svg');
    figures[i].hidden = !picture;
    figures[i].firstElementChild.replaceChildren(...(picture ? [picture.cloneNode(true)] : []));
  });
  const values = document.getElementById('large-values');
  values.replaceChildren();
  heads.forEach((head, column) => {
    const cell = row.cells[column];
    if (column < 2 || cell.className === 'pic' || cell.className === 'found' || !cell.textContent) return;
    const entry = document.createElement('div');
    const term = document.createElement('dt');
    const value = document.createElement('dd');
    term.textContent = head.textContent;
    value.append(...[...cell.cloneNode(true).childNodes]);
    entry.append(term, value);
    values.append(entry);
  });
  document.getElementById('large-found').replaceChildren(
    ...[...row.querySelector('.found').cloneNode(true).childNodes]);
  before.disabled = !neighbour(row, 'previousElementSibling');
  after.disabled = !neighbour(row, 'nextElementSibling');
};
const step = (direction) => {
  const row = neighbour(shown, direction);
  if (row) show(row);
};
body.addEventListener('click', (event) => {
  const button = event.target.closest('.pic button');
  if (!button) return;
  show(button.closest('tr'));
  large.showModal();
});
before.addEventListener('click', () => step('previousElementSibling'));
after.addEventListener('click', () => step('nextElementSibling'));
document.getElementById('close').addEventListener('click', () => large.close());
large.addEventListener('click', (event) => { if (event.target === large) large.close(); });
large.addEventListener('keydown', (event) => {
  if (event.key === 'ArrowLeft') step('previousElementSibling');
  if (event.key === 'ArrowRight') step('nextElementSibling');
});
})();
)";

} // namespace drawings
