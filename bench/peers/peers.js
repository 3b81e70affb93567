// Round-trips a corpus (one statement per line) through one peer SQL library, as the comparison
// in run.sh needs it: parse each statement into the peer's tree and print the tree back as SQL.
// Prints one JSON line: statements, bytes, failures with the first message, and the in-process
// seconds of the best pass (the process start and the module load are left out; run.sh times the
// whole process separately).
'use strict';

const fs = require('fs');

async function makeRoundTrip(tool) {
    if (tool === 'pgsql-parser') {
        const pg = require('pgsql-parser');
        await pg.loadModule();
        return (sql) => pg.deparseSync(pg.parseSync(sql));
    }
    if (tool === 'node-sql-parser') {
        const { Parser } = require('node-sql-parser');
        const parser = new Parser();
        const options = { database: 'PostgresQL' };
        return (sql) => parser.sqlify(parser.astify(sql, options), options);
    }
    throw new Error(`unknown tool ${tool}`);
}

function onePass(roundTrip, statements) {
    let failed = 0;
    let firstError = '';
    let outBytes = 0;
    const start = process.hrtime.bigint();
    for (const sql of statements) {
        try {
            outBytes += roundTrip(sql).length;
        } catch (e) {
            if (!failed)
                firstError = String(e && e.message ? e.message : e).split('\n')[0].slice(0, 160);
            ++failed;
        }
    }
    const seconds = Number(process.hrtime.bigint() - start) / 1e9;
    return { seconds, failed, firstError, outBytes };
}

async function main() {
    const [tool, file, passesText] = process.argv.slice(2);
    if (!tool || !file) {
        console.error('usage: node peers.js pgsql-parser|node-sql-parser FILE [PASSES]');
        process.exit(2);
    }
    const passes = Math.max(1, Number(passesText || 1));
    const statements = fs.readFileSync(file, 'utf8').split('\n').filter((line) => line.length > 0);
    const bytes = statements.reduce((sum, s) => sum + Buffer.byteLength(s), 0);
    const roundTrip = await makeRoundTrip(tool);
    let best = null;
    for (let i = 0; i < passes; ++i) {
        const pass = onePass(roundTrip, statements);
        if (!best || pass.seconds < best.seconds)
            best = pass;
    }
    console.log(JSON.stringify({ tool, statements: statements.length, bytes, ...best }));
}

main().catch((e) => {
    console.error(e);
    process.exit(1);
});
