// What hostile mails cost: each at 1, 2, 4 and 8 times its size, with the time and the memory that reading it
// takes. A column of times that doubles is linear; one that grows by four is a fault. Each reading is a
// process of its own, so that its peak is its own.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <string>

#include "mime/Mail.h"

namespace {

using std::string;

string Repeated(const string& piece, std::size_t size) {
  string text;
  text.reserve(size + piece.size());
  while (text.size() < size) text += piece;
  return text;
}

string Numbered(const string& before, const string& after, std::size_t size) {
  string text;
  for (std::size_t i = 0; text.size() < size; ++i)
    text.append(before).append(std::to_string(i)).append(after);
  return text;
}

string Html(const string& body) {
  return "From: a@b\nContent-Type: text/html\n\n" + body;
}

string Multipart(const string& body) {
  return "From: a@b\nContent-Type: multipart/mixed; boundary=b\n\n" + body;
}

struct HostileMail {
  const char* Name;
  std::size_t Size;  // the smallest of the four, in bytes
  std::function<string(std::size_t)> Make;
};

constexpr std::size_t kMegabyte = 1 << 20;

const HostileMail kMails[] = {
    {"plain text", 4 * kMegabyte,
     [](std::size_t n) { return "From: a@b\n\n" + Repeated("A line of text.\n", n); }},
    {"one line", 4 * kMegabyte, [](std::size_t n) { return "From: a@b\n\n" + string(n, 'x'); }},
    {"base64 text", 4 * kMegabyte,
     [](std::size_t n) {
       return "From: a@b\nContent-Transfer-Encoding: base64\n\n" + Repeated(string(76, 'Q') + "\n", n);
     }},
    {"quoted-printable", 4 * kMegabyte,
     [](std::size_t n) {
       return "From: a@b\nContent-Transfer-Encoding: quoted-printable\n\n" + Repeated("=41=42=\n", n);
     }},
    {"UTF-16", 4 * kMegabyte,
     [](std::size_t n) {
       return "From: a@b\nContent-Type: text/plain; charset=utf-16\n\n" + string(n, 'x');
     }},
    {"ISO-2022-JP escapes", kMegabyte,
     [](std::size_t n) {
       return "From: a@b\nContent-Type: text/plain; charset=iso-2022-jp\n\n" + Repeated("\x1b$B\x1b(B", n);
     }},
    {"flowed", kMegabyte,
     [](std::size_t n) {
       return "From: a@b\nContent-Type: text/plain; format=flowed\n\n" + Repeated("a \n", n);
     }},
    {"empty parts", 64 << 10, [](std::size_t n) { return Multipart(Repeated("--b\n\n", n)); }},
    {"parts without a line", 64 << 10, [](std::size_t n) { return Multipart(Repeated("--b\n", n)); }},
    {"parts", 64 << 10,
     [](std::size_t n) { return Multipart(Repeated("--b\nContent-Type: text/plain\n\nx\n", n)); }},
    {"nested multiparts", 64 << 10,
     [](std::size_t n) {
       string m = "From: a@b\n";
       for (int i = 0; m.size() < n; ++i)
         m += "Content-Type: multipart/mixed; boundary=b" + std::to_string(i) + "\n\n--b" +
              std::to_string(i) + "\n";
       return m;
     }},
    {"multiparts of one boundary", 64 << 10,
     [](std::size_t n) {
       return "From: a@b\n" + Repeated("Content-Type: multipart/mixed; boundary=b\n\n--b\n", n);
     }},
    {"message parts", 64 << 10,
     [](std::size_t n) {
       return Multipart(Repeated("--b\nContent-Type: message/rfc822\n\nTo: a@b\n\n", n));
     }},
    {"parts of junk", 64 << 10, [](std::size_t n) { return Multipart("--b\n" + Repeated("x\n", n)); }},
    {"parts of blank names", 64 << 10,
     [](std::size_t n) { return Multipart("--b\n" + Repeated("x y:\n", n)); }},
    {"parts of colons", 64 << 10, [](std::size_t n) { return Multipart("--b\n" + Repeated(":\n", n)); }},
    {"parts of headers", 64 << 10, [](std::size_t n) { return Multipart("--b\n" + Repeated("X:\n", n)); }},
    {"Content-Dispositions", 16 << 10,
     [](std::size_t n) { return Repeated("Content-Disposition: a; b=c\n", n); }},
    {"quotes in Content-Type", 32 << 10,
     [](std::size_t n) { return "Content-Type: text/plain; " + Repeated("p=\"", n) + "\n\nx"; }},
    {"p=( in Content-Type", 32 << 10,
     [](std::size_t n) { return "Content-Type: text/plain; " + Repeated("p=(", n) + "\n\nx"; }},
    {"p=(; in Content-Type", 32 << 10,
     [](std::size_t n) { return "Content-Type: text/plain; " + Repeated("p=(;", n) + "\n\nx"; }},
    {"blank parameters", 32 << 10,
     [](std::size_t n) { return "Content-Type: text/plain; " + Repeated("p q;", n) + "\n\nx"; }},
    {"encoded words in a parameter", 32 << 10,
     [](std::size_t n) {
       return "Content-Type: text/plain; p=\"" + Repeated("=?utf-8?Q?a?= ", n) + "\"\n\nx";
     }},
    {"charset pieces", 8 << 10,
     [](std::size_t n) {
       return "Content-Type: text/plain; p*0*=utf-8''a" + Numbered("; p*", "*=%41", n) + "\n\nx";
     }},
    {"Content-ID", 32 << 10, [](std::size_t n) { return "Content-ID: " + Repeated("<(", n) + "\n\nx"; }},
    {"Content-Location", 32 << 10,
     [](std::size_t n) { return "Content-Location: " + Repeated("=?a", n) + "\n\nx"; }},
    {"nested messages", 64 << 10,
     [](std::size_t n) { return "From: a@b\n" + Repeated("Content-Type: message/rfc822\n\n", n); }},
    {"dashes under boundaries", kMegabyte,
     [](std::size_t n) {
       string m = "From: a@b\n";
       for (int i = 0; i < 90; ++i)
         m += "Content-Type: multipart/mixed; boundary=" + string(60, 'x') + std::to_string(i) + "\n\n--" +
              string(60, 'x') + std::to_string(i) + "\n";
       return m + "\n" + Repeated("--" + string(61, 'x') + "\n", n);
     }},
    {"preamble", 4 * kMegabyte, [](std::size_t n) { return Multipart(Repeated("text\n", n)); }},
    {"headers", 16 << 10, [](std::size_t n) { return Numbered("X-", ": 1\n", n); }},
    {"equal headers", 16 << 10, [](std::size_t n) { return Repeated("X: 1\n", n); }},
    {"empty headers", 4 << 10, [](std::size_t n) { return Repeated(":\n", n); }},
    {"To headers", 16 << 10, [](std::size_t n) { return "From: a@b\n" + Repeated("To: a@b\n", n); }},
    {"From headers", 16 << 10, [](std::size_t n) { return Repeated("From: a@b\n", n); }},
    {"Content-Type headers", 16 << 10,
     [](std::size_t n) { return Repeated("Content-Type: text/plain\n", n); }},
    {"lines that are no header", 64 << 10, [](std::size_t n) { return Repeated("x\n", n); }},
    {"addresses", 32 << 10, [](std::size_t n) { return "From: " + Repeated("a@b,", n) + "\n"; }},
    {"groups in turn", 32 << 10, [](std::size_t n) { return "From: " + Repeated("a:b;", n) + "\n"; }},
    {"nested groups", 8 << 10, [](std::size_t n) { return "From: " + Repeated("a:", n) + "\n"; }},
    {"nested comments", 32 << 10, [](std::size_t n) { return "From: " + string(n, '(') + "\n"; }},
    {"comments in turn", 32 << 10, [](std::size_t n) { return "From: " + Repeated("()", n) + "\n"; }},
    {"words and comments", 32 << 10, [](std::size_t n) { return "From: " + Repeated("a(", n) + "\n"; }},
    {"commas and comments", 32 << 10, [](std::size_t n) { return "From: " + Repeated(",(", n) + "\n"; }},
    {"dots and comments", 32 << 10, [](std::size_t n) { return "From: " + Repeated(".(", n) + "\n"; }},
    {"at signs", 32 << 10, [](std::size_t n) { return "From: " + Repeated("a@", n) + "\n"; }},
    {"angles", 32 << 10, [](std::size_t n) { return "From: " + Repeated("<", n) + "\n"; }},
    {"routes", 32 << 10, [](std::size_t n) { return "From: " + Repeated("<@a,", n) + "\n"; }},
    {"domain literals", 32 << 10, [](std::size_t n) { return "From: " + Repeated("a@[", n) + "\n"; }},
    {"quotes", 32 << 10, [](std::size_t n) { return "From: " + Repeated("\"", n) + "\n"; }},
    {"quotes and commas", 32 << 10, [](std::size_t n) { return "From: " + Repeated("\",", n) + "\n"; }},
    {"a phrase of words", 32 << 10, [](std::size_t n) { return "From: " + Repeated("a ", n) + "\n"; }},
    {"a phrase with a comma", 32 << 10, [](std::size_t n) { return "From: " + Repeated("a b, ", n) + "\n"; }},
    {"semicolons", 32 << 10, [](std::size_t n) { return "From: " + Repeated(";", n) + "\n"; }},
    {"encoded words in From", 32 << 10,
     [](std::size_t n) { return "From: " + Repeated("=?utf-8?Q?a?= ", n) + " <a@b>\n"; }},
    {"encoded word that never ends", 32 << 10,
     [](std::size_t n) { return "From: " + Repeated("=?", n) + " <a@b>\n"; }},
    {"encoded words of many charsets", 32 << 10,
     [](std::size_t n) { return "Subject: " + Repeated("=?utf-8?Q?a?= =?koi8-r?Q?b?= ", n) + "\n"; }},
    {"a subject of =?", 32 << 10, [](std::size_t n) { return "Subject: " + Repeated("=?", n) + "\n"; }},
    {"folds", 32 << 10, [](std::size_t n) { return "Subject: " + Repeated("\n\t ", n) + "\n"; }},
    {"parameters", 8 << 10,
     [](std::size_t n) { return "Content-Type: text/plain" + Numbered("; p", "=1", n) + "\n\nx"; }},
    {"equal parameters", 8 << 10,
     [](std::size_t n) { return "Content-Type: text/plain" + Repeated("; p=1", n) + "\n\nx"; }},
    {"parameters in pieces", 8 << 10,
     [](std::size_t n) { return "Content-Type: text/plain" + Numbered("; p*", "*=%41", n) + "\n\nx"; }},
    {"parameters in one piece", 8 << 10,
     [](std::size_t n) { return "Content-Type: text/plain" + Repeated("; p*0=1", n) + "\n\nx"; }},
    {"a Content-Type of comments", 32 << 10,
     [](std::size_t n) { return "Content-Type: text/plain;" + string(n, '(') + "\n\nx"; }},
    {"a Content-Type of semicolons", 32 << 10,
     [](std::size_t n) { return "Content-Type: text/plain" + string(n, ';') + "\n\nx"; }},
    {"a References of words", 32 << 10,
     [](std::size_t n) { return "References: " + Repeated("<a@b>", n) + "\n\nx"; }},
    {"a Message-ID of comments", 32 << 10,
     [](std::size_t n) { return "Message-ID: " + Repeated("(", n) + "\n\nx"; }},
    {"a Date of words", 32 << 10, [](std::size_t n) { return "Date: " + Repeated("Mon ", n) + "\n\nx"; }},
    {"HTML: attributes of a tag", 64 << 10,
     [](std::size_t n) { return Html("<p" + Numbered(" a", "=1", n) + ">x"); }},
    {"HTML: tag names", 64 << 10, [](std::size_t n) { return Html(Numbered("<t", ">x", n)); }},
    {"HTML: C1 characters", 64 << 10, [](std::size_t n) { return Html(Repeated("&#150;", n)); }},
    {"HTML: nested tags", 64 << 10, [](std::size_t n) { return Html(Repeated("<div>", n)); }},
    {"HTML: nested lists", 64 << 10, [](std::size_t n) { return Html(Repeated("<ul><li>", n)); }},
    {"HTML: angles", 64 << 10, [](std::size_t n) { return Html(Repeated("<", n)); }},
    {"HTML: declarations", 64 << 10, [](std::size_t n) { return Html(Repeated("<!", n)); }},
    {"HTML: comments that never end", 64 << 10, [](std::size_t n) { return Html(Repeated("<!--", n)); }},
    {"HTML: entities", 64 << 10, [](std::size_t n) { return Html(Repeated("&amp", n)); }},
    {"HTML: end tags", 64 << 10, [](std::size_t n) { return Html(Repeated("<b></i>", n)); }},
    {"HTML: text", kMegabyte, [](std::size_t n) { return Html(Repeated("<p>A line of text.</p>\n", n)); }},
    {"HTML: line breaks", 64 << 10, [](std::size_t n) { return Html(Repeated("<br>", n)); }},
};

struct Cost {
  double Seconds = 0;
  long Peak = 0;  // bytes
  string End;
};

double Now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Reads the mail in a process of its own; a pipe tells how long the reading took.
Cost CostOf(const string& mail) {
  int channel[2];
  if (pipe(channel) != 0) return {0, 0, "no pipe"};
  const pid_t child = fork();
  if (child == 0) {
    alarm(15);
    const double start = Now();
    char end = '+';
    try {
      Mime::ReadMail(mail);
    } catch (const std::exception& error) {
      end = '-';
    }
    const double seconds = Now() - start;
    const bool told = write(channel[1], &seconds, sizeof seconds) > 0 && write(channel[1], &end, 1) > 0;
    _exit(told ? 0 : 1);
  }
  close(channel[1]);
  Cost cost;
  char end = 'x';
  if (read(channel[0], &cost.Seconds, sizeof cost.Seconds) > 0 && read(channel[0], &end, 1) > 0)
    cost.End = end == '+' ? "read" : "refused";
  close(channel[0]);
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  if (WIFSIGNALED(status)) cost.End = "signal " + std::to_string(WTERMSIG(status));
  cost.Peak = usage.ru_maxrss * 1024;
  return cost;
}

}  // namespace

int main(int argc, char** argv) {
  const string only = argc > 1 && argv[1][0] != '-' ? argv[1] : "";
  std::printf("%-32s %9s %9s %9s %9s %9s  %s\n", "mail", "KB", "ms x1", "x2", "x4", "x8",
              "peak MB, end (largest)");
  for (const HostileMail& mail : kMails) {
    if (!only.empty() && string(mail.Name).find(only) == string::npos) continue;
    std::printf("%-32s %9zu", mail.Name, mail.Size >> 10);
    Cost cost;
    for (const std::size_t factor : {1u, 2u, 4u, 8u}) {
      cost = CostOf(mail.Make(mail.Size * factor));
      std::printf(" %9.1f", cost.Seconds * 1000);
      std::fflush(stdout);
    }
    std::printf("  %4ld, %s\n", cost.Peak >> 20, cost.End.c_str());
  }
}
