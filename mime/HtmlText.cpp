#include "mime/HtmlText.h"

#include <glib.h>
#include <libxml/HTMLparser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string_view>
#include <vector>

#include "mime/Charset.h"

namespace Mime {
namespace {

constexpr std::string_view kUnseen[] = {"head", "script", "style", "title", "template", "noframes", "select"};
constexpr std::string_view kBlocks[] = {
    "address",  "article",    "aside",  "body",   "center", "dd",     "div",  "dl", "dt",
    "fieldset", "figcaption", "figure", "footer", "form",   "header", "html", "li", "main",
    "nav",      "section",    "table",  "tbody",  "tfoot",  "thead",  "tr"};
constexpr std::string_view kParagraphs[] = {"blockquote", "h1", "h2", "h3", "h4",  "h5",
                                            "h6",         "p",  "ol", "ul", "pre", "hr"};

template <std::size_t Size>
bool IsOneOf(std::string_view name, const std::string_view (&names)[Size]) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

// Far deeper than any mail that was written to be read. The parser searches its open elements at each end
// tag, so a depth without bound would let a hostile mail keep it busy for hours.
constexpr int kDeepest = 2000;
constexpr StringView kTooDeep = u"[The rest of this HTML is nested too deeply to be read.]";

// Collects the text while the parser walks through the document.
class TextCollector {
 public:
  explicit TextCollector(htmlParserCtxt* parser) : parser_(parser) {}

  void StartElement(std::string_view name, const xmlChar** attributes) {
    if (parser_->nameNr > kDeepest) return Stop();
    if (IsOneOf(name, kUnseen)) ++unseen_;
    if (unseen_ > 0) return;
    if (name == "br") return BreakLine();
    if (name == "td" || name == "th") blankPending_ = true;
    Boundary(name, attributes);
    if (name == "pre") ++preformatted_;
    if (name == "ol" || name == "ul") lists_.push_back({name == "ol", 0});
    if (name == "li") BeginItem();
  }

  void EndElement(std::string_view name) {
    if (IsOneOf(name, kUnseen) && unseen_ > 0) --unseen_;
    if (unseen_ > 0 || name == "br") return;
    if (name == "pre" && preformatted_ > 0) --preformatted_;
    if ((name == "ol" || name == "ul") && !lists_.empty()) lists_.pop_back();
    Boundary(name, nullptr);
  }

  void Characters(std::string_view bytes) {
    if (unseen_ > 0) return;
    for (const char16_t c : Platform::FromUtf8(bytes)) {
      const bool lineEnd = c == u'\n' || c == u'\r';
      if (preformatted_ > 0 && lineEnd) {
        BreakLine();
      } else if (preformatted_ == 0 && (lineEnd || c == u' ' || c == u'\t' || c == u'\f')) {
        blankPending_ = true;
      } else {
        Append(c);
      }
    }
  }

  String Take() {
    text_.resize(text_.find_last_not_of(u"\n ") + 1);
    return std::move(text_);
  }

 private:
  void Stop() {
    BreakLine();
    text_ += kTooDeep;
    xmlStopParser(parser_);
  }

  struct List {
    bool Numbered;
    int Items;
  };

  // A block's edge: what follows stands on a new line, behind an empty one where paragraphs meet. The
  // paragraphs of one widespread mail program are lines and say so by their class.
  void Boundary(std::string_view name, const xmlChar** attributes) {
    const bool paragraph = IsOneOf(name, kParagraphs);
    if (!paragraph && !IsOneOf(name, kBlocks)) return;
    blankPending_ = false;
    if (!text_.empty() && text_.back() != u'\n') text_ += u'\n';
    if (!paragraph) return;
    if (attributes && name == "p") tightParagraph_ = HasOfficeClass(attributes);
    emptyLinePending_ = !(name == "p" && tightParagraph_);
  }

  static bool HasOfficeClass(const xmlChar** attributes) {
    for (; attributes[0]; attributes += 2) {
      const auto* name = reinterpret_cast<const char*>(attributes[0]);
      const auto* value = reinterpret_cast<const char*>(attributes[1]);
      if (std::string_view(name) == "class" && value) return std::string_view(value).starts_with("Mso");
    }
    return false;
  }

  void BeginItem() {
    if (!lists_.empty() && lists_.back().Numbered) {
      for (const char digit : std::to_string(++lists_.back().Items)) Append(static_cast<char16_t>(digit));
      Append(u'.');
    } else {
      Append(u'*');
    }
    blankPending_ = true;
  }

  void BreakLine() {
    EmitEmptyLine();
    blankPending_ = false;
    text_ += u'\n';
  }

  void EmitEmptyLine() {
    if (emptyLinePending_ && !text_.empty() && !text_.ends_with(u"\n\n")) text_ += u'\n';
    emptyLinePending_ = false;
  }

  void Append(char16_t c) {
    EmitEmptyLine();
    if (blankPending_ && !text_.empty() && text_.back() != u'\n') text_ += u' ';
    blankPending_ = false;
    // Numeric references of the C1 range mean windows-1252, and a no-break space is a blank in plain text.
    if (c >= 0x80 && c < 0xA0) {
      const char byte = static_cast<char>(c);
      text_ += DecodeText({&byte, 1}, "windows-1252");
    } else {
      text_ += c == 0xA0 ? u' ' : c;
    }
  }

  htmlParserCtxt* parser_;
  String text_;
  std::vector<List> lists_;
  int unseen_ = 0;
  int preformatted_ = 0;
  bool tightParagraph_ = false;
  bool blankPending_ = false;
  bool emptyLinePending_ = false;
};

std::string_view NameOf(const xmlChar* name) {
  return reinterpret_cast<const char*>(name);
}

void OnStart(void* collector, const xmlChar* name, const xmlChar** attributes) {
  static const xmlChar* none[] = {nullptr, nullptr};
  static_cast<TextCollector*>(collector)->StartElement(NameOf(name), attributes ? attributes : none);
}

void OnEnd(void* collector, const xmlChar* name) {
  static_cast<TextCollector*>(collector)->EndElement(NameOf(name));
}

void OnCharacters(void* collector, const xmlChar* text, int length) {
  static_cast<TextCollector*>(collector)->Characters({NameOf(text).data(), static_cast<std::size_t>(length)});
}

struct FreeParser {
  void operator()(htmlParserCtxt* parser) const { htmlFreeParserCtxt(parser); }
};

}  // namespace

String HtmlToText(StringView html) {
  // The parser would end at a zero character and skip the other controls; damage has to show.
  std::string bytes = Platform::ToUtf8(html);
  String visible;
  const auto isControl = [](char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r' && c != '\f';
  };
  if (std::any_of(bytes.begin(), bytes.end(), isControl)) {
    visible = html;
    for (char16_t& c : visible) {
      if (c < 0x20 && isControl(static_cast<char>(c))) c = 0xFFFD;
    }
    bytes = Platform::ToUtf8(visible);
  }
  if (bytes.empty()) return {};

  const std::unique_ptr<htmlParserCtxt, FreeParser> parser(
      htmlCreateMemoryParserCtxt(bytes.data(), static_cast<int>(bytes.size())));
  if (!parser) throw std::bad_alloc();
  TextCollector collector(parser.get());
  *parser->sax = htmlSAXHandler{};
  parser->sax->startElement = OnStart;
  parser->sax->endElement = OnEnd;
  parser->sax->characters = OnCharacters;
  parser->sax->ignorableWhitespace = OnCharacters;
  parser->userData = &collector;
  htmlCtxtUseOptions(parser.get(), HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                                       HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC);
  xmlSwitchEncoding(parser.get(), XML_CHAR_ENCODING_UTF8);
  htmlParseDocument(parser.get());
  return collector.Take();
}

std::string HtmlCharset(std::string_view bytes) {
  constexpr std::size_t kMetaLimit = 2048;
  std::string start(bytes.substr(0, kMetaLimit));
  for (char& c : start) c = g_ascii_tolower(c);
  const std::size_t meta = start.find("<meta");
  const std::size_t name = meta == std::string::npos ? meta : start.find("charset=", meta);
  if (name == std::string::npos) return {};
  const std::size_t first = start.find_first_not_of("\"' ", name + 8);
  if (first == std::string::npos) return {};
  return start.substr(first, start.find_first_of("\"'; />", first) - first);
}

}  // namespace Mime
