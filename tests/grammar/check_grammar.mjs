// Compares the scopes that the editors' grammar gives with the tokens that the interpreter reads.
//   node check_grammar.mjs LIST_TOKENS SOURCE_FOLDER
// Every script of examples/ and tests/, every snippet of the extension, the programs of the documentation, and
// random texts that are made of words, signs and characters that nobody would write.
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join, relative } from 'node:path';
import { loadGrammar, scopesOf } from './scopes.mjs';
import { randomTexts, wordsOfTheLanguage } from './random_texts.mjs';
import { documentedPrograms, snippetPrograms } from './programs.mjs';

const [listTokens, sourceFolder] = process.argv.slice(2);
const MOST_FAULTS_SHOWN = 20;

// ORDER TOKEN
const KIND = { none: 0, delimiter: 1, variable: 2, number: 5, command: 6, dotted: 7, string: 8, label: 9, call: 10,
  comment: 11, keyword: 12 };
const LINE_ENDS = /[\r\n\0]/;

const words = wordsOfTheLanguage(sourceFolder);
const builtIns = new Set(words.builtIns);
const constants = new Set(['true', 'false', 'nothing']);

// The scope that a token's first and every further character has to have, for a token and the one before it.
function wanted(token, before) {
  const behind = before?.kind === KIND.command ? before.text.toLowerCase() : '';
  const word = token.text.toLowerCase();
  const named = { function: 'entity.name.function.', sub: 'entity.name.function.', goto: 'entity.name.label.' }[behind];
  switch (token.kind) {
    case KIND.none: return 'invalid.illegal.character.';
    case KIND.number: return 'constant.numeric.';
    case KIND.string: return 'string.quoted.double.';
    case KIND.comment: return 'comment.line.number-sign.';
    case KIND.label: return token.text.endsWith(':') && /(entity\.name|punctuation\.separator)\.label\./;
    case KIND.command: return word === 'rem' ? 'comment.line.rem.' : 'keyword.';
    case KIND.call: return named ?? (builtIns.has(word) ? 'support.function.'
      : word.includes('.') ? /(entity\.name\.function\.member|variable\.other\.object|punctuation\.accessor)\./
      : 'entity.name.function.call.');
    case KIND.dotted: return named ?? /(variable\.other\.(object|property)|punctuation\.accessor)\./;
    case KIND.keyword: return named ?? / (keyword|storage|support\.type)\./;
    case KIND.variable:
      if (named) return named;
      if (behind === 'type') return 'entity.name.type.';
      if (before?.kind === KIND.keyword && before.text.toLowerCase() === 'as') return /(entity\.name\.type|variable\.other|constant\.language)\./;
      return constants.has(word) ? 'constant.language.' : 'variable.other.brindle ';
    case KIND.delimiter: return /(keyword\.operator|punctuation|invalid\.illegal\.operator)\./;
    default: throw new Error(`a token of kind ${token.kind}`);
  }
}

function compare(text, tokens, scopes, complain) {
  const inside = new Uint8Array(text.length); // 1: of a literal, 2: of a comment or a line that is not read
  let before;
  for (const token of tokens) {
    token.text = text.slice(token.start, token.end);
    const isLineEnd = token.kind === KIND.delimiter && LINE_ENDS.test(text[token.start] ?? '\n');
    if (!isLineEnd) {
      const scope = wanted(token, before);
      const end = token.kind === KIND.none ? token.start + 1 : token.end;
      for (let at = token.start; at < end; ++at) {
        if (scopes[at] === undefined) continue; // a line end inside a literal
        if (scope instanceof RegExp ? !scope.test(scopes[at]) : !scopes[at].includes(` ${scope}`)) {
          complain(at, `wanted ${scope} for ${JSON.stringify(token.text.slice(0, 40))}, found${scopes[at]}`);
          break;
        }
      }
    }
    if (token.kind === KIND.string) inside.fill(1, token.start, token.end);
    if (token.kind === KIND.comment) inside.fill(2, token.start, token.end);
    if (token.kind === KIND.command && /^(rem|include|library|encrypt)$/i.test(token.text)) token.skips = true;
    before = token;
  }
  // The lines that statements skip: nothing there is compared but the extent of a remark.
  tokens.forEach((token, number) => {
    if (!token.skips) return;
    const name = tokens[number + 1];
    let at = name?.kind === KIND.string && !/^rem|encrypt$/i.test(token.text) ? name.end : token.end;
    const from = /^rem$/i.test(token.text) ? token.start : at;
    while (at < text.length && !LINE_ENDS.test(text[at])) ++at;
    inside.fill(/^rem$/i.test(token.text) ? 2 : 3, from, at);
  });
  for (let at = 0; at < text.length; ++at) {
    if (scopes[at] === undefined || inside[at] === 3) continue;
    const literal = scopes[at].includes(' string.quoted.');
    const comment = scopes[at].includes(' comment.');
    if (literal !== (inside[at] === 1) || comment !== (inside[at] === 2)) {
      complain(at, `${['no literal or comment', 'a literal', 'a comment'][inside[at]]} here, found${scopes[at]}`);
      return;
    }
  }
}

function scriptsBelow(folder) {
  return readdirSync(folder, { withFileTypes: true, recursive: true })
    .filter((entry) => entry.isFile() && entry.name.endsWith('.bas'))
    .map((entry) => join(entry.parentPath ?? entry.path, entry.name))
    .sort();
}

// Texts by name; what is no UTF-8 has other positions in an editor and is left out.
function texts() {
  const all = new Map();
  for (const folder of ['examples', 'tests/scripts', 'bench'])
    for (const path of scriptsBelow(join(sourceFolder, folder))) {
      const bytes = readFileSync(path);
      const text = bytes.toString('utf8');
      if (Buffer.from(text, 'utf8').equals(bytes)) all.set(relative(sourceFolder, path), text);
    }
  if (all.size < 100) throw new Error(`only ${all.size} scripts below ${sourceFolder}`);
  const named = [...documentedPrograms(sourceFolder), ...snippetPrograms(sourceFolder), ...randomTexts(words)];
  for (const [name, text] of named) all.set(name, text);
  return all;
}

function tokensOf(all) {
  const folder = mkdtempSync(join(tmpdir(), 'brindle-grammar-'));
  try {
    const paths = [...all.values()].map((text, number) => {
      const path = join(folder, String(number));
      writeFileSync(path, text, 'utf8');
      return path;
    });
    const listed = [];
    for (const line of execFileSync(listTokens, paths, { encoding: 'utf8', maxBuffer: 1 << 30 }).split('\n')) {
      if (line.startsWith('file ')) listed.push([]);
      else if (line !== '') {
        const [kind, , start, end] = line.split(' ').map(Number);
        listed.at(-1).push({ kind, start, end });
      }
    }
    return listed;
  } finally {
    rmSync(folder, { recursive: true });
  }
}

const grammar = await loadGrammar(sourceFolder);
const all = texts();
const listed = tokensOf(all);
let faults = 0;
let compared = 0;
[...all].forEach(([name, text], number) => {
  const complain = (at, fault) => {
    if (++faults > MOST_FAULTS_SHOWN) return;
    const line = text.slice(0, at).split(/\r\n|\r|\n/).length;
    console.log(`${name}:${line}: ${fault}`);
  };
  const scopes = scopesOf(grammar, text);
  compare(text, listed[number], scopes, complain);
  // What we wrote ourselves is never shown as a fault.
  const fault = scopes.findIndex((names) => names?.includes(' invalid.'));
  if (fault >= 0 && /^(snippet |examples)/.test(name)) complain(fault, `found${scopes[fault]}`);
  compared += listed[number].length;
});
console.log(`${all.size} texts, ${compared} tokens, ${faults} faults`);
process.exit(faults === 0 ? 0 : 1);
