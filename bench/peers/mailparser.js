// What a service on Node.js needs at least for a mail, for comparison: mailparser reads each mail of an mbox, and
// better-sqlite3 commits one reply for it. Without what mailparser can leave out: links in texts, and a conversion
// between text and HTML.
//   node mailparser.js MBOX DATABASE
const fs = require('node:fs');
const { simpleParser } = require('mailparser');
const Database = require('better-sqlite3');

const [mbox, file] = process.argv.slice(2);
const kCutMarker = '----- Reply above this line -----';
const kOptions = { skipHtmlToText: true, skipTextToHtml: true, skipTextLinks: true, skipImageLinks: true };

function* mails(bytes) {
  const separator = Buffer.from('\nFrom ');
  for (let begin = 0; begin < bytes.length; ) {
    const next = bytes.indexOf(separator, begin);
    const end = next < 0 ? bytes.length : next + 1;
    yield bytes.subarray(bytes.indexOf(10, begin) + 1, end); // without its "From " line
    begin = end;
  }
}

async function main() {
  const database = new Database(file);
  database.pragma('journal_mode = WAL');
  database.pragma('synchronous = FULL');
  database.exec('CREATE TABLE replies (id INTEGER PRIMARY KEY, discussion, subject, body, user, at)');
  const insert = database.prepare(
    "INSERT INTO replies (discussion, subject, body, user, at) VALUES (1, ?, ?, 1, strftime('%Y-%m-%dT%H:%M:%fZ', 'now'))");
  let count = 0;
  for (const bytes of mails(fs.readFileSync(mbox))) {
    const mail = await simpleParser(bytes, kOptions);
    insert.run(mail.subject, mail.text.split(kCutMarker, 1)[0]);
    ++count;
  }
  database.close();
  console.log(`${count} replies`);
}

main();
