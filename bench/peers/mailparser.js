// What a service on Node.js needs at least for a mail, for comparison: mailparser reads each mail of an mbox, and
// better-sqlite3 commits one reply for it. mailparser is called as its documentation shows. With --least it leaves
// out all that it can: links in texts, and conversions between text and HTML, without which a mail that has only
// HTML has no text.
//   node mailparser.js [--least] MBOX DATABASE
const fs = require('node:fs');
const { simpleParser } = require('mailparser');
const Database = require('better-sqlite3');

const least = process.argv[2] === '--least';
const [mbox, file] = process.argv.slice(least ? 3 : 2);
const kCutMarker = '----- Reply above this line -----';
const kOptions = least
  ? { skipHtmlToText: true, skipTextToHtml: true, skipTextLinks: true, skipImageLinks: true }
  : {};

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
