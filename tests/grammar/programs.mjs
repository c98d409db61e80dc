// Programs that stand in other files: the snippets of the extension and the blocks of the documentation.
import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';

// A placeholder becomes what it shows.
export function expand(body) {
  let text = body.join('\n');
  for (let before = ''; before !== text;) {
    before = text;
    text = text.replace(/\$\{\d+:([^${}]*)\}/g, '$1').replace(/\$\{\d+\|([^,|]*)[^|]*\|\}/g, '$1');
  }
  return text.replace(/\$\{?\d+\}?/g, '');
}

export function* snippetPrograms(sourceFolder) {
  const snippets = JSON.parse(readFileSync(join(sourceFolder, 'editors/vscode/snippets/brindle.json'), 'utf8'));
  for (const [name, snippet] of Object.entries(snippets)) yield [`snippet ${name}`, expand(snippet.body) + '\n'];
}

// Fenced blocks that say to be scripts, and blocks that are indented: of whatever language, they are texts to read.
export function* documentedPrograms(sourceFolder) {
  const pages = ['README.md', ...readdirSync(join(sourceFolder, 'docs'), { recursive: true })
    .filter((name) => name.endsWith('.md')).map((name) => join('docs', name))];
  for (const page of pages) {
    let number = 0;
    const text = readFileSync(join(sourceFolder, page), 'utf8');
    for (const [, program] of text.matchAll(/^```(?:basic|brindle)[^\n]*\n(.*?)^```/gms))
      yield [`${page}, program ${++number}`, program];
    for (const [block] of text.matchAll(/(?<=^\n)(?:(?: {4}.*)?\n)+/gm))
      if (block.trim() !== '') yield [`${page}, program ${++number}`, block.replace(/^ {4}/gm, '')];
  }
}
