// Texts by chance: words of the language and names, signs, literals and characters that start no token.
import { readFileSync } from 'node:fs';
import { join } from 'node:path';

export function wordsOfTheLanguage(sourceFolder) {
  const found = (path, pattern) =>
    [...readFileSync(join(sourceFolder, path), 'utf8').matchAll(pattern)].map((match) => match[1]);
  const words = {
    commands: found('src/interpreter/word_tables.cpp', /Word<COMMAND_TYPE>\{u"(\w+)"/g),
    keywords: found('src/interpreter/word_tables.cpp', /Word<KEYWORD_TYPE>\{u"(\w+)"/g),
    builtIns: found('src/interpreter/function_table.cpp', /BuiltIn\{u"(\w+)"/g),
  };
  if (words.commands.length !== 49 || words.keywords.length !== 50 || words.builtIns.length !== 86)
    throw new Error('the tables of words are not where they were');
  return words;
}

// A small generator whose numbers are the same on every machine.
function chance(seed) {
  let state = seed >>> 0;
  return (limit) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * limit);
  };
}

const NAMES = ['a', 'list', 'Point', 'é', 'straße', 'x1', 'a_b', 'x.y', 'r.f.g', 'x.', 'x#y', 'a"b', 'print.x', 'rem_', 'as.b',
  'formats', 'True', 'NOTHING', 'f(', 'o.m(', 'print(', 'rem(', 'sin (', 'here:', 'print:', 'value:', 'x.y:', '日本'];
const OTHERS = ['1', '1.5', '1e3', '1e+3', '0x1F', '2"', '٣', '"text"', '""', '"two\nlines"', '"#"', '"', '# note', '# "note"', '#',
  '_', '.', '°', '_a', '.5', '\u00a0', '\f', '\0', '😀', '\ud835\udc00', 'a😀', "'", '>=', '=<', '<=', '=>', '~~', '\\'];
const SIGNS = [...'()[]=+-*/^%<>,;:!~&{}|?$@'];
const GAPS = [' ', ' ', ' ', ' ', '\t', '', '\n', '\n', '\r\n', '\r', '\n\n'];

export function* randomTexts(words) {
  const language = [...words.commands, ...words.keywords, ...words.builtIns.map((name) => `${name}(`)];
  for (let seed = 1; seed <= 400; ++seed) {
    const next = chance(seed);
    const one = (list) => list[next(list.length)];
    let text = '';
    for (let count = 0; count < 150; ++count) {
      let word = one([language, language, NAMES, OTHERS, SIGNS].at(next(5)));
      if (next(8) === 0) word = word.toUpperCase();
      text += word + one(GAPS);
    }
    yield [`random text ${seed}`, text];
  }
}
