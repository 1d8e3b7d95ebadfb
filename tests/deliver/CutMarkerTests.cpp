// The cut marker and the attribution above it, in the forms that mail programs give them.
#include "gateway/delivery/AttributionSentence.h"
#include "gateway/delivery/CutMarker.h"
#include "gateway/policy/EmptyReply.h"
#include "mime/MailCharacters.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

constexpr const char* kMarker = "----- Reply above this line -----";

// [M] is the marker.
std::string Written(std::string text) {
  for (auto at = text.find("[M]"); at != std::string::npos; at = text.find("[M]"))
    text.replace(at, 3, kMarker);
  return text;
}

// The characters of a class, as ranges.
std::string Members(bool (*isMember)(char16_t)) {
  std::ostringstream ranges;
  for (int c = 0; c < 0xFFFF; ++c) {
    const int first = c;
    while (isMember(static_cast<char16_t>(c))) ++c;
    if (c > first) ranges << ' ' << std::hex << std::uppercase << first;
    if (c > first + 1) ranges << '-' << c - 1;
  }
  return ranges.str();
}

TEST(MailCharacters, AreTheSubstitutesThatMailProgramsWrite) {
  EXPECT_EQ(" A-D 85 2028-2029", Members(Mime::IsLineEnd));
  EXPECT_EQ(" 9 20 A0 1680 2000-200A 202F 205F 3000", Members(Mime::IsBlank));
  EXPECT_EQ(" AD 34F 61C 180E 200B-200F 202A-202E 2060-206F FE00-FE0F FEFF", Members(Mime::IsInvisible));
  EXPECT_EQ(" 2D 2010-2015 2212 2500-2501 FE58 FE63 FF0D", Members(Mime::IsDash));
  EXPECT_EQ(" 3E 7C BB 203A 2502-2503 FF1E", Members(Mime::IsQuoteSign));
}

class CutMarker : public testing::Test {
 protected:
  // The repaired body, with a bar at the position that Repair returned.
  std::string Repaired(const std::string& text) {
    String body = FromUtf8(Written(text));
    const std::size_t cut = marker.Repair(body);
    if (cut == String::npos) return Utf8(body) + " (none)";
    return Utf8(body.substr(0, cut)) + "|" + Utf8(body.substr(cut));
  }
  World world;
  Gateway::CutMarker marker;
};

TEST_F(CutMarker, IsFoundInEveryFormThatProgramsGiveIt) {
  const char* const forms[] = {
      "[M]",
      "> [M]",
      ">[M]",
      ">> > | [M]",
      "\u00BB [M]",
      "*[M]*",
      "  \u00A0[M]",
      "> ----- Reply above\n> this line -----",
      ">----- Reply\r\n>above this\r\n>line -----",
      "> > ----- Reply above this line\n> > -----",
      "----- Reply above\nthis line -----",
      "----- Reply above\n\nthis line -----",
      "-----\u00A0Reply\u00A0above\u00A0this\u00A0line\u00A0-----",
      "-----   Reply \t above  this\u2003line -----",
      "\u200B-----\u200B Re\u00ADply above\u200C this\u2060 line\uFEFF -----",
      "-----\u200BReply\u200Babove\u200Bthis\u200Bline\u200B-----",
      "\u2011\u2011\u2011\u2011\u2011 Reply above this line \u2010\u2010\u2010\u2010\u2010",
      "\u2013\u2013\u2013\u2013\u2013 Reply above this line \u2212\u2212\u2212\u2212\u2212",
      "> \u2014\u2014- Reply above this line \u2014\u2013",
      "\u2014 Reply above this line \u2014",
      "> *\u2014 Reply above this line \u2014* \u00A0",
      "------- Reply above this line -------",
      "> --\u00AD--- Reply above this\n> \u00A0line \u2014--",
  };
  for (const std::string form : forms) {
    EXPECT_EQ("Yes.\n|" + std::string(kMarker), Repaired("Yes.\n\n" + form).substr(0, 6 + 33)) << form;
    EXPECT_EQ("|" + std::string(kMarker), Repaired(form + "\n> Bob").substr(0, 34)) << form;
  }
}

TEST_F(CutMarker, IsTheFirstAndNothingElseChanges) {
  const Gateway::String hostile[] = {Gateway::String(40'000'000, u'-'), Gateway::String(2'000'000, u'\u00AD'),
                                     Gateway::String(2'000'000, u'>')};
  const struct {
    std::string Before, After;
  } rows[] = {
      {"a  \n\u00A0b\u200B\r\n\r\n[M]\n> [M]\nc", "a  \n\u00A0b\u200B\r\n|[M]\n> [M]\nc"},
      {"my answer [M]", "my answer |[M]"},
      {"my answer > -----\u00A0Reply above this line -----", "my answer > |[M]"},
      {"He wrote \u2014 Reply above this line \u2014 here\n[M]",
       "He wrote \u2014 Reply above this line \u2014 here\n|[M]"},
      {"What is \"Reply above this line\"?\n> [M]", "What is \"Reply above this line\"?\n|[M]"},
      {"---- Reply above this line -----", "---- Reply above this line ----- (none)"},
      {"----- Reply above\n\n\nthis line -----", "----- Reply above\n\n\nthis line ----- (none)"},
      {"-----Reply above this line -----", "-----Reply above this line ----- (none)"},
      {"> a quote\n\nInline.\n> \n>\n[M]", "> a quote\n\nInline.\n|[M]"},
      {" \n\u00A0\n> \n[M]", "|[M]"},
      {"-- \nAlice\nSent from my phone\n[M]", "-- \nAlice\nSent from my phone\n|[M]"},
      {"a\n***\n[M]", "a\n***\n|[M]"},
      {"", " (none)"},
  };
  for (const auto& row : rows) EXPECT_EQ(Written(row.After), Repaired(row.Before)) << row.Before;
  for (Gateway::String body : hostile) EXPECT_EQ(String::npos, marker.Repair(body));
  // The most that is searched: a reply of 32,767 characters, an attribution of 16,384 and the marker.
  for (const bool beyond : {false, true}) {
    String body = String(32767 + 16384 - 33 + (beyond ? 1 : 0), u'x') + FromUtf8(kMarker);
    EXPECT_EQ(beyond, marker.Repair(body) == String::npos);
  }
  std::string misses;
  while (misses.size() < 40'000'000) misses += "----- Reply above this lime -----\n> ";
  EXPECT_EQ(misses + " (none)", Repaired(misses));
}

TEST_F(CutMarker, RemovesTheAttributionAboveItInEveryLanguageAndProgram) {
  const char* const attributions[] = {
      // Gmail, Apple Mail, Thunderbird, Yahoo and others, one sentence
      "On Mon, Nov 2, 2026 at 9:14\u202FAM Alice Archer <alice@x.org> wrote:\n\n",
      "On Mon, 2 Nov 2026 at 09:14, Alice Long Name <\nalice@x.org> wrote:\n\n",
      "On Mon, 2 Nov 2026 at 09:14, a discussion with a\nvery long name and its\nwriter "
      "<alice@x.org>\nwrote:\n",
      "> On 2 Nov 2026, at 09:14, Alice <alice@x.org> wrote:\n> \n",
      "    On Monday, November 2, 2026 at 09:14:03 AM GMT+1, Alice <a@x.org> wrote: \n \n ",
      "On 02/11/2026 09:14, Alice wrote:\n",
      "--- On Mon, 2/11/26, Alice <a@x.org> wrote:\n\n",
      "At 2026-11-02 09:14:03, \"Alice\" <a@x.org> wrote:\n",
      "On Mon, 2 Nov 2026 09:14:03 +0900\nAlice <a@x.org> wrote:\n\n",
      "Alice Archer <alice@x.org> wrote:\n",
      "Quoting Alice <a@x.org>:\n\n",
      "------- Original Message -------\nOn Monday, November 2nd, 2026 at 9:14 AM, Alice <a@x.org> "
      "wrote:\n\n\n",
      "Am Mo., 2. Nov. 2026 um 09:14 Uhr schrieb Alice <alice@x.org>:\n\n",
      "Am 02.11.26 um 09:14 schrieb Alice:\n",
      "Am Mo., 2. Nov. 2026 um\n09:14 Uhr\nschrieb\nAlice:\n",
      "On Monday evening, November 2, 2026 at 09:14, Alice wrote:\n",
      "Alice <a@x.org> hat am 02.11.2026 09:14 CET geschrieben:\n\n \n",
      "Le lun. 2 nov. 2026 à 09:14, Alice <alice@x.org> a écrit\u00A0:\n\n",
      "Le 02/11/2026 à 09:14, Alice a écrit :\n",
      "El lun, 2 nov 2026 a las 9:14, Alice (<alice@x.org>) escribió:\n\n",
      "Il giorno lun 2 nov 2026 alle ore 09:14 Alice <a@x.org> ha scritto:\n",
      "In data lunedì 2 novembre 2026 09:14:03 CET, Alice ha scritto:\n",
      "Em seg., 2 de nov. de 2026 às 09:14, Alice <a@x.org> escreveu:\n",
      "Alice <a@x.org> escreveu (segunda, 2/11/2026 à(s) 09:14):\n",
      "Op ma 2 nov 2026 om 09:14 schreef Alice <alice@x.org>:\n",
      "Op 2 nov. 2026, om 09:14 heeft Alice <a@x.org> het volgende geschreven:\n",
      "Den mån 2 nov. 2026 kl 09:14 skrev Alice <a@x.org>:\n",
      "2 nov. 2026 kl. 09:14 skrev Alice <a@x.org>:\n",
      "Den man. 2. nov. 2026 kl. 09.14 skrev Alice <a@x.org>:\n",
      "man. 2. nov. 2026 kl. 09:14 skrev Alice <a@x.org>:\n",
      "ma 2. marrask. 2026 klo 9.14 Alice (a@x.org) kirjoitti:\n",
      "Alice <a@x.org> kirjoitti 2.11.2026 kello 9.14:\n",
      "pon., 2 lis 2026 o 09:14 Alice <a@x.org> napisał(a):\n",
      "W dniu 02.11.2026 o 09:14, Alice pisze:\n",
      "Wiadomość napisana przez Alice <a@x.org> w dniu 2 lis 2026, o godz. 09:14:\n",
      "po 2. 11. 2026 v 9:14 odesílatel Alice <a@x.org> napsal:\n",
      "2. 11. 2026 v 9:14, Alice <a@x.org>:\n",
      "Dne 02. 11. 26 v 9:14 Alice napsal(a):\n",
      "пн, 2 нояб. 2026\u202Fг. в 09:14, Alice <a@x.org>:\n",
      "02.11.2026 09:14, Alice пишет:\n",
      "2 нояб. 2026 г., в 09:14, Alice <a@x.org> "
      "написал(а):\n",
      "2026年11月2日(月) 9:14 Alice <a@x.org>:\n",
      "2026/11/02 9:14、Alice <a@x.org>のメール：\n",
      "Alice <a@x.org> 于2026年11月2日周一 09:14写道：\n",
      "在 2026-11-02 09:14:03，\"Alice\" <a@x.org> 写道：\n",
      "Alice <a@x.org> 於 2026年11月2日 週一 上午9:14寫道：\n",
      "2026년 11월 2일 (월) 오전 9:14, Alice <a@x.org>님이 작성:\n",
      "---- On Mon, 02 Nov 2026 09:14:03 +0100 Alice <a@x.org> wrote ---\n\n",
      "Am Montag, 2. November 2026 um 09:14:03 MEZ hat Alice <a@x.org> Folgendes geschrieben:\n",
      "> Alice <a@x.org> şunları yazdı (2 Kas 2026 09:14):\n> \n",
      "pon, 2. stu 2026. u 09:14 Alice <a@x.org> napisao je:\n",
      "Pada tanggal Sen, 2 Nov 2026 pukul 09.14 Alice <a@x.org> menulis:\n",
      "בתאריך יום ב׳, 2 בנוב׳ 2026 ב-9:14 מאת Alice <\u202Aa@x.org\u202C\u200F>:\u202C\n",
      // Outlook on a desk, in a browser and on a phone, and other programs with header lines
      "-----Original Message-----\nFrom: Alice\nSent: Monday, November 2, 2026 8:55 AM\nTo: Bob\nSubject: "
      "Plan\n\n",
      "________________________________\nFrom: Alice <a@x.org>\nSent: Monday 2.11.2026\nTo: Bob\nCc: "
      "Carol\nSubject: "
      "Plan\n\n",
      "From: Alice\nSent: Monday 2.11.2026\nTo: Bob <b@x.org>; Carol <c@x.org>; Dave <d@x.org>; Eve "
      "<e@x.org>;\n"
      "Frank <f@x.org>\nSubject: A plan whose title is long (Ostrand Talvane Project Apollo, Ostrand\n"
      "Talvane Discussion 1)\nImportance: High\n\n",
      "*From:* Alice\n*Date:* Monday 2.11.2026\n\n*To:* Bob\n*Subject:* Plan\n\n> ",
      "-------- Original message --------\nFrom: Alice <a@x.org>\nDate: 02/11/2026 09:14\n\n",
      "------ Original Message ------\nFrom \"Alice\" <a@x.org>\nTo Bob\nDate 02/11/2026 09:14\nSubject "
      "Plan\n\n",
      "-----Alice Archer/Apollo wrote: -----\nTo: Bob\nFrom: Alice\nDate: 11/02/2026\nSubject: Plan\n\n",
      "Gesendet: Montag, 02. November 2026 um 09:14 Uhr\nVon: \"Alice\" <a@x.org>\nAn: Bob\nBetreff: Plan\n",
      "-----Ursprüngliche Nachricht-----\nVon: Alice\nGesendet: Montag\nAn: Bob\nBetreff: Plan\n\n",
      "De\u00A0: Alice\nEnvoyé\u00A0: lundi 2.11.2026\nÀ\u00A0: Bob\nObjet\u00A0: Plan\n\n",
      "De: Alice\nEnviado: lunes 2.11.2026\nPara: Bob\nAsunto: Plan\n\n",
      "Da: Alice\nInviato: lunedì 2.11.2026\nA: Bob\nOggetto: Plan\n\n",
      "De: Alice\nEnviada em: segunda-feira 2.11.2026\nPara: Bob\nAssunto: Plan\n\n",
      "Van: Alice\nVerzonden: maandag 2.11.2026\nAan: Bob\nOnderwerp: Plan\n\n",
      "Från: Alice\nSkickat: måndag 2.11.2026\nTill: Bob\nÄmne: Plan\n\n",
      "Fra: Alice\nSendt: mandag 2.11.2026\nTil: Bob\nEmne: Plan\n\n",
      "Lähettäjä: Alice\nLähetetty: maanantai 2.11.2026\nVastaanottaja: Bob\nAihe: Plan\n\n",
      "Od: Alice\nWysłano: poniedziałek 2.11.2026\nDo: Bob\nTemat: Plan\n\n",
      "---------- Původní e-mail ----------\nOd: Alice\nKomu: Bob\nDatum: 2. 11. 2026\n",
      "От: Alice\nОтправлено: "
      "2.11.2026\nКому: Bob\nТема: Plan\n\n",
      "差出人: Alice\n送信日時: 2026\n宛先: Bob\n件名: Plan\n\n",
      "------------------ 原始邮件 ------------------\n发件人: "
      "\"Alice\"<a@x.org>;\n"
      "发送时间: 2026\n收件人: Bob\n主题: Plan\n\n",
      "寄件者: Alice\n寄件日期: 2026\n收件者: Bob\n主旨: "
      "Plan\n\n",
      "보낸 사람: Alice\n보낸 날짜: 2026\n받는 사람: "
      "Bob\n제목: Plan\n\n",
  };
  for (const std::string attribution : attributions) {
    EXPECT_EQ(Written("Fine.\n\n-- \nEve\n|[M]\n> x"),
              Repaired("Fine.\n\n-- \nEve\n\n" + attribution + "[M]\n> x"));
    EXPECT_EQ(Written("|[M]"), Repaired(attribution + "> -----\u00A0Reply above\n> this line -----"));
  }
  EXPECT_EQ(Written("a\n|[M]"), Repaired("a\nOn Mon, Nov 2, 2026, Alice <a@x.org> wrote: > [M]"));
}

TEST(AttributionSentence, HoldsADateOrATimeOfAnyProgram) {
  for (const char16_t* date : {u"1970", u"a 2099", u"1.2.26", u"11/12-26", u"1. 2. 26", u"x1.22.26"})
    EXPECT_TRUE(Gateway::HoldsDate(date)) << Utf8(date);
  for (const char16_t* other : {u"", u"1969", u"2100", u"12026", u"100.2.26", u"1.222.26", u"1.2.266", u"1.2",
                                u"1:2:26", u"1..26", u"1.2:26", u"02000"})
    EXPECT_FALSE(Gateway::HoldsDate(other)) << Utf8(other);
  for (const char16_t* time :
       {u"9:14", u"09.14", u"9h14", u"9.14.", u"2026-11-02 09:14", u"1.2.26 9.14", u"9.14.x"})
    EXPECT_TRUE(Gateway::HoldsTime(time)) << Utf8(time);
  for (const char16_t* other : {u"", u"9:", u"9:1", u"9:145", u"109:14", u"2.11.26", u"1-09:14", u"9,14"})
    EXPECT_FALSE(Gateway::HoldsTime(other)) << Utf8(other);
}

TEST_F(CutMarker, KeepsTheWritersOwnTextAboveIt) {
  const char* const own[] = {
      "Alice wrote:",
      "On Monday Alice wrote:",
      "On the other hand, as of 2 Nov 2026, Bob wrote:",
      "On Mon, 2 Nov 2026 at 09:14, Alice <a@x.org> wrote",
      "At 9:14 he wrote:",
      "On the other hand, as of 2 Nov 2026 at 09:14 Bob wrote:",
      "On the Monday evening, November 2, 2026 at 09:14 Bob wrote:",
      "Vi den 2 nov. 2026 kl 09:14 skrev Bo:",
      "Am Mo., 2. Nov. 2026 um\n09:14\nUhr\nschrieb\nAlice:",
      "Please write to us by 2 Nov 2026 at alice@x.org:",
      "Meet on 2.11.2026: a@x.org",
      "From: Berlin\nTo: Paris\nDate: 5 Nov",
      "From: Berlin\nSubject: travel",
      "From: team\nTo: client\nDate: tomorrow\nSubject: Delay",
      "Trip\n________________\nFrom: Berlin\nTo: Paris",
      ("From: A\nDate: 2 Nov 2026\nTo: C\nSubject: Plan (Ostrand Talvane Project Apollo, "
       "Ostrand Talvane Discussion 1) as sent\nMy answer."),
      "On 2.11.2026 I wrote to bob@x.org:",
      "On 2.11.26 the customer wrote:",
      "Som jag skrev den 2 nov 2026:",
      "Yesterday I mailed Bob <bob@x.org> and he wrote:",
      "From: A\nDate: B\nTo: C\nSubject: D\nand my own line",
      "From: A\nDate: B\n\nSubject: D\n\nmy paragraph",
      "________________________________",
      "________________________________\nFrom me\nTo you",
      "To be honest, I\nFrom my side\nSubject to change",
      "Original Message",
      "On Mon, 2 Nov 2026 at 09:14, Alice <a@x.org> wrote:\n> that\nand I say this",
  };
  for (const std::string text : own)
    EXPECT_EQ(Written(text + "\n|[M]"), Repaired(text + "\n\n> [M]")) << text;
  EXPECT_EQ(Written("a\n|[M]"), Repaired("a\n\n\n\nAm 02.11.26 um 09:14 schrieb Al:\n\n\n[M]"));
  for (const std::size_t lines : {20u, 21u}) {
    std::string headers = "From: Al\nDate: 2.11.2026\nTo: x";
    for (std::size_t i = 0; i <= lines; ++i) headers += std::string(66, 'x') + "\n";
    headers += "Subject: Plan\n";
    EXPECT_EQ(Written((lines > 20 ? headers : "") + "|[M]"), Repaired(headers + "[M]"));
  }
  for (const std::string& text : {std::string(1001, 'x'), "-" + std::string(1000, 'x') + ":-"})
    EXPECT_EQ(Written(text + "\n|[M]"), Repaired(text + "\n\n[M]"));
  EXPECT_EQ(Written("On time!\n|[M]"), Repaired("On time!\nAm 02.11.26 um 09:14 schrieb Al:\n[M]"));
  EXPECT_EQ(Written("On 2 Nov 2026 I come\n|[M]"), Repaired("On 2 Nov 2026 I come\nA <a@x.org> wrote:\n[M]"));
}

TEST_F(CutMarker, ReportsWhyNothingIsAboveIt) {
  const struct {
    std::string Body;
    bool Encrypted;
    std::string Reason;
  } rows[] = {
      {"a\n[M]", false, ""},
      {"a", true, ""},
      {"", true, "the mail is encrypted"},
      {" \n\u00A0\u200B", false, "the mail has no text"},
      {"\n> [M]\n> x\n\nbelow", false,
       "above the line \"----- Reply above this line -----\", and the text below"},
      {"On 2 Nov 2026, Al <a@x.org> wrote:\n[M]\n", false, "has no text above the line"},
  };
  for (const auto& row : rows) {
    Mime::Mail mail;
    mail.Body = FromUtf8(Written(row.Body));
    mail.Encrypted = row.Encrypted;
    const std::size_t cut = marker.Repair(mail.Body);
    const auto why = Gateway::WhyReplyIsEmpty(mail, cut, marker.OriginalText());
    const std::string reason = why ? Utf8(why->In()) : "";
    EXPECT_EQ(row.Reason.empty(), reason.empty()) << row.Body;
    EXPECT_NE(std::string::npos, reason.find(row.Reason)) << reason;
  }
}

TEST_F(CutMarker, IsLoadedAgainAfterAFailure) {
  world.Services.Missing.insert("TvResourceServices.Resource");
  EXPECT_EQ(Written("[M] (none)"), Repaired("[M]"));
  world.Services.Missing.clear();
  EXPECT_EQ(Written("|[M]"), Repaired("> [M]"));
}

}  // namespace
}  // namespace Tests
