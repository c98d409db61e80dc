// Tasks of the type "brindle": check or run a script. Colours, snippets and folding need no program.
'use strict';
const vscode = require('vscode');

function makeTask(definition, scope) {
  const runner = vscode.workspace.getConfiguration('brindle').get('runner', 'brindle');
  const script = definition.script || '${file}';
  // A process is given its words one by one: no shell takes a path apart.
  const words = definition.command === 'run' ? ['--ui=console', '--', script] : ['check', script];
  const task = new vscode.Task(definition, scope, definition.command, 'brindle',
    new vscode.ProcessExecution(runner, words), definition.command === 'check' ? ['$brindle'] : []);
  if (definition.command === 'check') task.group = vscode.TaskGroup.Build;
  return task;
}

function activate(context) {
  context.subscriptions.push(vscode.tasks.registerTaskProvider('brindle', {
    provideTasks: () => ['check', 'run'].map((command) => makeTask({ type: 'brindle', command }, vscode.TaskScope.Workspace)),
    resolveTask: (task) => makeTask(task.definition, task.scope ?? vscode.TaskScope.Workspace),
  }));
}

module.exports = { activate };
