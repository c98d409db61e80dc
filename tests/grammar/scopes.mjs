// The grammar of the editors, run as an editor runs it: the scopes of every character of a text.
import { createRequire } from 'node:module';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';

const require = createRequire(import.meta.url);
const oniguruma = require('vscode-oniguruma');
const textmate = require('vscode-textmate');

export async function loadGrammar(sourceFolder) {
  await oniguruma.loadWASM(readFileSync(require.resolve('vscode-oniguruma/release/onig.wasm')).buffer);
  const path = join(sourceFolder, 'editors/vscode/syntaxes/brindle.tmLanguage.json');
  const registry = new textmate.Registry({
    onigLib: Promise.resolve({
      createOnigScanner: (patterns) => new oniguruma.OnigScanner(patterns),
      createOnigString: (text) => new oniguruma.OnigString(text),
    }),
    loadGrammar: async (scope) =>
      scope === 'source.brindle' ? textmate.parseRawGrammar(readFileSync(path, 'utf8'), path) : null,
  });
  const grammar = await registry.loadGrammar('source.brindle');
  if (grammar === null) throw new Error('there is no grammar source.brindle');
  return grammar;
}

// For each UTF-16 unit its scopes, one text with a blank around each; undefined for line ends.
export function scopesOf(grammar, text) {
  const scopes = new Array(text.length);
  const lines = /([^\r\n]*)(\r\n|\r|\n|$)/gy;
  let state = textmate.INITIAL;
  while (lines.lastIndex < text.length) {
    const start = lines.lastIndex;
    const result = grammar.tokenizeLine(lines.exec(text)[1], state);
    state = result.ruleStack;
    for (const token of result.tokens) {
      const names = ` ${token.scopes.join(' ')} `;
      for (let at = start + token.startIndex; at < Math.min(start + token.endIndex, text.length); ++at)
        if (text[at] !== '\n' && text[at] !== '\r') scopes[at] = names;
    }
  }
  return scopes;
}
