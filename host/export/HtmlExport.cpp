#include "host/export/HtmlExport.h"

#include "gateway/delivery/Digest.h"
#include "mime/Base64.h"
#include "platform/ReasonTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/Language.h"
#include "runtime/Texts.h"

namespace Host {
namespace {

constexpr std::string_view kStyle =
    "body{max-width:48em;margin:2em auto;padding:0 1em;font-family:sans-serif;line-height:1.5}"
    "article{border-top:1px solid;margin-top:1.5em}h2{font-size:1em;margin-bottom:0}"
    "div{white-space:pre-wrap;overflow-wrap:anywhere}h1,li{overflow-wrap:anywhere}";

constexpr std::string_view kIndexFile = "index.html", kPageStart = "discussion-", kPageEnd = ".html";

// The text with line ends and tabs kept, and nothing that ends an element or an attribute's value.
std::string Escaped(const String& text) {
  String escaped;
  escaped.reserve(text.size() + text.size() / 8);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (IsSurrogatePair(text, i)) {
      escaped.append({c, text[++i]});
    } else if (c == u'&') {
      escaped += u"&amp;";
    } else if (c == u'<') {
      escaped += u"&lt;";
    } else if (c == u'>') {
      escaped += u"&gt;";
    } else if (c == u'"') {
      escaped += u"&quot;";
    } else if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
      continue;
    } else {
      const bool kept = c == u'\n' || c == u'\t' || !(IsControl(c) || IsSurrogate(c));
      escaped += kept ? c : u'\uFFFD';
    }
  }
  return ToUtf8(escaped);
}

std::string Word(std::int32_t text, StringView argument = {}) {
  return Escaped(Runtime::TextOf(text, argument));
}

// The digest of the style, by which the policy allows it.
std::string StyleSource() {
  const std::string digits = Gateway::Sha256({kStyle});
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2)
    bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
  return "sha256-" + Mime::EncodeBase64(bytes);
}

std::string PageStart(const String& title) {
  static const std::string policy =
      "default-src 'none'; style-src '" + StyleSource() + "'; base-uri 'none'; form-action 'none'";
  return "<!DOCTYPE html>\n<html lang=\"" + Escaped(FromUtf8(Runtime::UserLanguage())) +
         "\">\n<head>\n<meta charset=\"utf-8\">\n<meta http-equiv=\"Content-Security-Policy\" content=\"" +
         policy +
         "\">\n<meta name=\"referrer\" content=\"no-referrer\">\n<meta name=\"color-scheme\" content=\"light "
         "dark\">\n<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
         Escaped(title) + "</title>\n<style>" + std::string(kStyle) + "</style>\n</head>\n<body>\n";
}

constexpr std::string_view kFileEnd = "</main>\n</body>\n</html>\n";

std::string PageName(const DescribedDiscussion& discussion) {
  return std::string(kPageStart) + std::to_string(discussion.Number) + std::string(kPageEnd);
}

// "2024-05-01 09:30 UTC" for "2024-05-01T09:30:00.000Z"; a text of another form as it is.
String ShownTime(const String& at) {
  constexpr std::size_t kDay = 10, kMinutes = 16;
  return at.size() > kMinutes ? at.substr(0, kDay) + u" " + at.substr(kDay + 1, kMinutes - kDay - 1) + u" UTC"
                              : at;
}

// lang="" stands for an unknown language, and dir="auto" for the direction of the text's first letter.
std::string Article(const DescribedReply& reply, const String& title) {
  const std::string number = std::to_string(reply.Number), at = Escaped(reply.At);
  std::string article = "<article id=\"reply-" + number + "\">\n<h2><bdi lang=\"\">" +
                        Escaped(reply.UserName) + "</bdi>, <time datetime=\"" + at + "\">" +
                        Escaped(ShownTime(reply.At)) + "</time></h2>\n";
  if (!reply.Subject.empty() && reply.Subject != title)
    article += "<p lang=\"\" dir=\"auto\">" + Escaped(reply.Subject) + "</p>\n";
  return article + "<div lang=\"\" dir=\"auto\">" + Escaped(reply.Body) + "</div>\n</article>\n";
}

// Returns the number of replies.
std::size_t WritePage(const std::string& folder, const ProjectAdministration& projects, const String& path,
                      const DescribedDiscussion& discussion) {
  Runtime::StagedFile page(folder);
  page.Write(PageStart(discussion.Title) + "<nav><a href=\"" + std::string(kIndexFile) + "\">" +
             Word(TextNumber::kPageAllDiscussions) + "</a></nav>\n<main>\n<h1 lang=\"\" dir=\"auto\">" +
             Escaped(discussion.Title) + "</h1>\n");
  std::size_t count = 0;
  projects.EachReply(path, discussion.Number, [&](const DescribedReply& reply) {
    page.Write(Article(reply, discussion.Title));
    ++count;
  });
  if (count == 0) page.Write("<p>" + Word(TextNumber::kPageReplies, u"0") + "</p>\n");
  page.Write(kFileEnd);
  page.Publish(folder + "/" + PageName(discussion));
  page.Keep();
  return count;
}

}  // namespace

bool IsHtmlExportFile(const std::string& name) {
  if (name == kIndexFile) return true;
  if (!name.starts_with(kPageStart) || !name.ends_with(kPageEnd)) return false;
  const std::size_t end = name.size() - kPageEnd.size();
  return end > kPageStart.size() && name.find_first_not_of("0123456789", kPageStart.size()) == end;
}

std::size_t WriteHtml(const std::string& folder, const ProjectAdministration& projects, const String& path,
                      const ProjectDescription& project) {
  Runtime::StagedFile index(folder);
  index.Write(PageStart(project.Name) + "<main>\n<h1 lang=\"\" dir=\"auto\">" + Escaped(project.Name) +
              "</h1>\n<h2>" + Word(TextNumber::kPageDiscussions) + "</h2>\n<ul>\n");
  std::size_t count = 0;
  for (const DescribedDiscussion& discussion : project.Discussions) {
    const std::size_t replies = WritePage(folder, projects, path, discussion);
    index.Write("<li><a lang=\"\" href=\"" + PageName(discussion) + "\"><bdi>" + Escaped(discussion.Title) +
                "</bdi></a> (" + Word(TextNumber::kPageReplies, FromUtf8(std::to_string(replies))) +
                ")</li>\n");
    count += replies;
  }
  index.Write("</ul>\n" + std::string(kFileEnd));
  index.Publish(folder + "/" + std::string(kIndexFile));
  index.Keep();
  return count;
}

}  // namespace Host
