// Checks the extension for Visual Studio Code, as far as that goes without the editor.
//   node check_extension.mjs RUNNER SOURCE_FOLDER
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import Module, { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { snippetPrograms } from './programs.mjs';

const [runner, sourceFolder] = process.argv.slice(2);
const USAGE = 2; // the runner's status for words that it does not know
const folder = join(sourceFolder, 'editors/vscode');
const read = (path) => JSON.parse(readFileSync(join(folder, path), 'utf8'));
const extension = read('package.json');
const language = read('language-configuration.json');
const expression = (rule) => (typeof rule === 'string' ? new RegExp(rule) : new RegExp(rule.pattern, rule.flags));

const examples = readdirSync(join(sourceFolder, 'examples'), { recursive: true })
  .filter((name) => name.endsWith('.bas'))
  .map((name) => [name, readFileSync(join(sourceFolder, 'examples', name), 'utf8').split('\n')]);
assert(examples.length >= 5);

function every_file_that_is_contributed_is_there() {
  const { languages, grammars, snippets } = extension.contributes;
  const paths = [extension.main, ...languages.map((entry) => entry.configuration), ...grammars.map((entry) => entry.path),
    ...snippets.map((entry) => entry.path)];
  for (const path of paths) assert(existsSync(join(folder, path)), path);
  assert.equal(read(grammars[0].path).scopeName, grammars[0].scopeName);
}

function the_examples_are_indented_by_the_rules() {
  const increase = expression(language.indentationRules.increaseIndentPattern);
  const decrease = expression(language.indentationRules.decreaseIndentPattern);
  let lines = 0;
  for (const [name, text] of examples) {
    let before;
    text.forEach((line, number) => {
      if (line.trim() === '' || line.trimStart().startsWith('#')) return;
      const indent = line.length - line.trimStart().length;
      if (before !== undefined) {
        const wanted = before.indent + (increase.test(before.line) ? 2 : 0) - (decrease.test(line) ? 2 : 0);
        // A line may also go back to the margin behind "end" or a label.
        assert.equal(indent, wanted, `${name}:${number + 1}: ${line}`);
        ++lines;
      }
      before = { line, indent };
    });
  }
  assert(lines > 500, `only ${lines} lines`);
}

function blocks_fold_in_any_case_of_letters() {
  const start = expression(language.folding.markers.start);
  const end = expression(language.folding.markers.end);
  const changes = [(line) => line, (line) => line.toUpperCase(), (line) => line.replace(/\b[a-z]/g, (c) => c.toUpperCase()),
    (line) => line.replace(/\bend(?=\w)/g, 'End')];
  for (const [name, text] of examples)
    for (const change of changes) {
      const open = [];
      text.forEach((original, number) => {
        const line = change(original);
        if (start.test(line)) open.push(number);
        else if (end.test(line)) assert(open.pop() !== undefined, `${name}:${number + 1}: ${line} closes nothing`);
      });
      assert.deepEqual(open, [], `${name}: blocks that stay open`);
    }
  for (const line of ['if a = 1 then b = 2 endif', 'for i = 1 to 3 : next', 'forest = 1', 'do.x = 1', '# if a', 'x = 1'])
    assert(!start.test(line), line);
}

function a_word_is_a_token() {
  const words = 'x_1 + straße: o.name("a") 1.5'.match(new RegExp(language.wordPattern, 'g'));
  assert.deepEqual(words, ['x_1', 'straße', 'o', 'name', 'a', '1.5']);
}

function comments_go_on_in_the_next_line() {
  const [sign, remark] = language.onEnterRules;
  assert(expression(sign.beforeText).test('  # a note') && !expression(sign.beforeText).test('x = 1 # a note'));
  assert(expression(remark.beforeText).test('REM a note') && !expression(remark.beforeText).test('remark = 1'));
}

function problems_are_read_from_lines() {
  const [matcher] = extension.contributes.problemMatchers;
  const match = (line) => new RegExp(matcher.pattern.regexp).exec(line);
  const { file, line, column, severity, message, code } = matcher.pattern;
  for (const path of ['script.bas', '/home/me/my scripts/a:b.bas']) {
    const found = match(`${path}:12:5: error: Expected: THEN [9]`);
    assert.deepEqual([file, line, column, severity, message, code].map((group) => found[group]),
      [path, '12', '5', 'error', 'Expected: THEN', '9']);
  }
  assert.equal(match('1 file checked'), null);
}

// A folder with the files that snippets name.
function inTemporaryFolder(action) {
  const temporary = mkdtempSync(join(tmpdir(), 'brindle-extension-'));
  try {
    writeFileSync(join(temporary, 'in.txt'), 'a line\n');
    writeFileSync(join(temporary, 'common.bas'), '');
    return action(temporary);
  } finally {
    rmSync(temporary, { recursive: true });
  }
}

// The matcher fits what the runner prints, and no snippet is a fault to it.
function the_runners_check_is_understood() {
  return inTemporaryFolder((temporary) => {
    const check = (text) => {
      writeFileSync(join(temporary, 'case.bas'), text);
      const done = spawnSync(runner, ['check', 'case.bas'], { cwd: temporary, encoding: 'utf8' });
      if (done.error) throw done.error;
      return { status: done.status, lines: (done.stdout + done.stderr).split('\n').filter((line) => line !== '') };
    };
    const faulty = check('x = 1\nif x = 1\n  print x\nendif\n');
    if (faulty.status === USAGE) return 'the runner has no command "check"';
    const pattern = new RegExp(extension.contributes.problemMatchers[0].pattern.regexp);
    const problem = faulty.lines.map((line) => pattern.exec(line)).find((match) => match !== null);
    assert(problem, `no problem was read from: ${faulty.lines.join('\n')}`);
    assert.deepEqual([problem[1], problem[2], problem[4]], ['case.bas', '2', 'error']);
    for (const [name, program] of snippetPrograms(sourceFolder)) {
      const wrapped = wholeProgram(name, program);
      assert.equal(check(wrapped).status, 0, `${name}:\n${wrapped}\n${check(wrapped).lines.join('\n')}`);
    }
  });
}

// What a snippet stands in.
function wholeProgram(name, program) {
  const names = 'a = 1\nb = 2\nvariable = 1\n';
  if (name === 'snippet Control') return `dialog "t", 0, 0, 9, 9\n${program}enddialog\n`;
  if (name === 'snippet Function' || name === 'snippet Sub') return `end\n${program}`;
  if (name === 'snippet Call') return `${program}end\nsub Name(n)\nendsub\n`;
  if (name === 'snippet Alter') return `dialog "t", 0, 0, 9, 9\ncontrol edittext "", 11, 1, 1, 1, 1\noninit Opened\nenddialog\nend\nsub Opened(r)\n${program}endsub\n`;
  return names + program;
}

function snippets_run_as_they_are() {
  inTemporaryFolder((temporary) => {
    for (const [name, program] of snippetPrograms(sourceFolder)) {
      const wrapped = wholeProgram(name, program);
      writeFileSync(join(temporary, 'case.bas'), wrapped);
      const done = spawnSync(runner, ['--ui=console', '--on-error=abort', 'case.bas'],
        { cwd: temporary, encoding: 'utf8', input: '', timeout: 20000 });
      assert.equal(done.status, 0, `${name}:\n${wrapped}\n${done.error ?? done.stderr}`);
    }
  });
}

function tasks_start_the_runner_without_a_shell() {
  const providers = {};
  const stub = {
    workspace: { getConfiguration: () => ({ get: (name, value) => (name === 'runner' ? '/opt/brindle' : value) }) },
    tasks: { registerTaskProvider: (type, provider) => (providers[type] = provider) },
    Task: class { constructor(...values) { [this.definition, this.scope, this.name, this.source, this.execution, this.matchers] = values; } },
    ProcessExecution: class { constructor(process, words) { Object.assign(this, { process, words }); } },
    TaskGroup: { Build: 'build' }, TaskScope: { Workspace: 2 },
  };
  const load = Module._load;
  Module._load = (name, ...rest) => (name === 'vscode' ? stub : load(name, ...rest));
  createRequire(import.meta.url)(join(folder, extension.main)).activate({ subscriptions: [] });
  Module._load = load;
  const [type] = extension.contributes.taskDefinitions;
  const offered = providers[type.type].provideTasks();
  assert.deepEqual(offered.map((task) => task.definition.command), type.properties.command.enum);
  assert.deepEqual(offered[0].execution, new stub.ProcessExecution('/opt/brindle', ['check', '${file}']));
  assert.deepEqual(offered[0].matchers, [`$${extension.contributes.problemMatchers[0].name}`]);
  const example = read('tasks.example.json').tasks[1];
  const resolved = providers[type.type].resolveTask({ definition: example, scope: 1 });
  assert.deepEqual(resolved.execution.words, ['--ui=console', '--', example.script]);
}

let failed = 0;
for (const test of [every_file_that_is_contributed_is_there, the_examples_are_indented_by_the_rules,
  blocks_fold_in_any_case_of_letters, a_word_is_a_token, comments_go_on_in_the_next_line, problems_are_read_from_lines,
  tasks_start_the_runner_without_a_shell, snippets_run_as_they_are, the_runners_check_is_understood]) {
  try {
    const left = test();
    console.log(left ? `left out ${test.name}: ${left}` : `passed ${test.name}`);
  } catch (fault) {
    ++failed;
    console.log(`FAILED ${test.name}: ${fault.message}`);
  }
}
process.exit(failed === 0 ? 0 : 1);
