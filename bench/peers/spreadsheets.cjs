// The formats of xls_format_bench with two libraries on Node, one line of JSON a figure:
// npm install ssf numfmt && node spreadsheets.cjs
const cases = [
    ['General', 1234.5],
    ['0.00', 1234.567],
    ['#,##0.00', 1234567.891],
    ['#,##0.00;[Red]-#,##0.00', -1234.5],
    ['0.00%', 0.1234],
    ['0.00E+00', 12345.678],
    ['# ??/??', 3.14159265],
    ['yyyy-mm-dd', 45000.5],
    ['h:mm:ss AM/PM', 45000.7543],
    ['[h]:mm:ss', 1.75],
];
const numbers = 20000;  // for one sample
const rounds = 12;      // the first warms up

function medianOf(show) {
    const samples = [];
    for (let round = 0; round < rounds; ++round) {
        const start = process.cpuUsage();
        for (let index = 0; index < numbers; ++index) {
            show(index % 7);
        }
        const used = process.cpuUsage(start);
        samples.push((used.user + used.system) * 1000 / numbers);
    }
    const measured = samples.slice(1).sort((a, b) => a - b);
    return measured[measured.length >> 1];
}

async function main() {
    const ssf = await import('ssf');
    const numfmt = await import('numfmt');
    const contenders = { ssf: (ssf.default || ssf).format, numfmt: numfmt.format || numfmt.default };
    for (const [format, number] of cases) {
        for (const [contender, show] of Object.entries(contenders)) {
            const ns = medianOf(step => show(format, number + step));
            console.log(JSON.stringify({ job: 'spreadsheet formats', corpus: format, contender, ns }));
        }
    }
}

main();
