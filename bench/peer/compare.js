// Compares the driver with another client. Both poll the same responder in turns. Prints a line of JSON.
//
// Synopsis: node compare.js BIN [--objects N] [--rounds N] [--core C|none]
//
// BIN is the folder with bench-responder and bench-poll. Responder and clients share the core C, or run on any
// core with "none". Exit code 3: the packages of this folder are not installed.
'use strict'

const { spawn } = require('node:child_process')
const { readFileSync } = require('node:fs')
const path = require('node:path')
const readline = require('node:readline')
const { setTimeout: delay } = require('node:timers/promises')
const { parseArgs } = require('node:util')

// The other client is compiled while it runs, so its first rounds are slow and are not counted.
const WARM_UP = 5

// The most milliseconds that a round may take.
const PATIENCE = 60000

// A program that answers each line of its input with a line.
class Program {
  constructor(core, command) {
    const [file, ...args] = core === 'none' ? command : ['taskset', '-c', core, ...command]
    this.name = path.basename(command[0])
    this.child = spawn(file, args, { stdio: ['pipe', 'pipe', 'inherit'] })
    this.child.stdin.on('error', () => {}) // the program has ended, which its output shows too
    this.ended = new Promise((resolve) => this.child.once('close', resolve).once('error', resolve))
    this.lines = readline.createInterface({ input: this.child.stdout })[Symbol.asyncIterator]()
  }
  async line() {
    const end = this.ended.then(() => ({ done: true }))
    const { value, done } = await Promise.race([this.lines.next(), end, delay(PATIENCE, {}, { ref: false })])
    if (done) throw new Error(`${this.name} ended early`)
    if (value === undefined) throw new Error(`${this.name} does not answer`)
    return value
  }
  async round() {
    this.child.stdin.write('\n')
    return Number(await this.line())
  }
  end() {
    this.child.kill()
    return this.ended
  }
}

// The highest core that this process may run on.
function lastCore() {
  return readFileSync('/proc/self/status', 'utf8').match(/^Cpus_allowed_list:.*?(\d+)$/m)[1]
}

function spread(samples) {
  const sorted = [...samples].sort((a, b) => a - b)
  const middle = (sorted.length - 1) / 2
  return { median: (sorted[Math.floor(middle)] + sorted[Math.ceil(middle)]) / 2, min: sorted[0], max: sorted.at(-1) }
}

async function takeTurns(clients, rounds) {
  const samples = clients.map(() => [])
  for (let count = -WARM_UP; count < rounds; ++count) {
    for (const [index, client] of clients.entries()) {
      const microseconds = await client.round()
      if (count >= 0) samples[index].push(Math.round(1e6 / microseconds))
    }
  }
  return samples.map(spread)
}

async function compare(bin, { objects, rounds, core }) {
  const programs = []
  const start = (...command) => programs[programs.push(new Program(core, command)) - 1]
  try {
    const [, port] = (await start(path.join(bin, 'bench-responder')).line()).split(' ')
    const ours = start(path.join(bin, 'bench-poll'), '--port', port, '--objects', objects)
    const theirs = start(process.execPath, path.join(__dirname, 'peer.js'), port, objects)
    const [driver, peer] = await takeTurns([ours, theirs], Number(rounds))
    return { driver, peer, ratio: driver.median / peer.median }
  } finally {
    await Promise.all(programs.map((program) => program.end()))
  }
}

function isInstalled(name) {
  try {
    return Boolean(require.resolve(name))
  } catch {
    return false
  }
}

async function main() {
  const { values: options, positionals: [bin] } = parseArgs({
    allowPositionals: true,
    options: {
      objects: { type: 'string', default: '1000' },
      rounds: { type: 'string', default: '50' },
      core: { type: 'string', default: lastCore() },
    },
  })
  if (!bin) throw new Error('the folder with the programs is missing')
  if (!isInstalled('@bacnet-js/client')) {
    process.stderr.write('compare.js: the packages are not installed (npm ci in bench/peer)\n')
    return 3
  }
  const { objects, rounds, core } = options
  if (!(Number(rounds) >= 1)) throw new Error(`--rounds "${rounds}": a number of at least 1 is allowed`)
  const figures = await compare(bin, options)
  const result = { benchmark: 'peer', objects: Number(objects), properties: 3, rounds: Number(rounds), core, unit: 'objects per second', ...figures }
  process.stdout.write(`${JSON.stringify(result)}\n`)
  return 0
}

main().then((code) => process.exit(code), (error) => {
  process.stderr.write(`compare.js: ${error.message}\n`)
  process.exit(1)
})
