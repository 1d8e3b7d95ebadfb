#include "gateway/delivery/AttributionLanguages.h"

#include <algorithm>
#include <unordered_set>

namespace Gateway {
namespace {

// clang-format off
constexpr AttributionLanguage kLanguages[] = {
    // Sentences of a date and an address alone occur in several languages.
    {"any", u"{date+address}:", u"", u"", u"", u"", u"", u""},
    {"English",
     u"On {date} wrote:|At {date} wrote:|{date+address} wrote:|{address} wrote:|{address} writes:|Quoting {address}:",
     u"Original Message|Original Email|Original Mail|Original Appointment|Reply Message|Forwarded Message",
     u"From", u"Sent|Date|Sent at", u"To", u"Subject", u"Cc|Bcc|Reply-To|Importance|Priority|Attachments"},
    {"German",
     u"Am {date} schrieb {name}:|Am {date} schrieb:|{address} schrieb am {date}:|{address} schrieb:|"
     u"{name} hat am {date} geschrieben:|Am {date} geschrieben:|Zitat von {address}:",
     u"Ursprüngliche Nachricht|Originalnachricht|Original-Nachricht|Ursprüngliche Mail|Weitergeleitete Nachricht",
     u"Von", u"Gesendet|Datum", u"An", u"Betreff", u"Cc|Bcc|Kopie|Antwort an|Wichtigkeit|Priorität|Anlagen"},
    {"French",
     u"Le {date} a écrit:|En date de {date} a écrit:|{address} a écrit:|{name} a écrit le {date}:|"
     u"Quoting {address}:|Citation de {address}:",
     u"Message d'origine|Message d’origine|Message original|Courriel original|Message transféré",
     u"De|Expéditeur", u"Envoyé|Date|Envoyé le", u"À|A|Pour|Destinataire", u"Objet|Sujet",
     u"Cc|Cci|Copie à|Répondre à|Importance|Pièces jointes"},
    {"Spanish",
     u"El {date} escribió:|En {date} escribió:|{address} escribió:|{name} escribió el {date}:|Citando a {address}:",
     u"Mensaje original|Mensaje de origen|Correo original|Mensaje reenviado",
     u"De", u"Enviado|Fecha|Enviado el|Enviada", u"Para|A", u"Asunto", u"CC|CCO|Responder a|Importancia|Datos adjuntos"},
    {"Italian",
     u"Il {date} ha scritto:|In data {date} ha scritto:|{address} ha scritto:|Il {date} scrive:|Citando {address}:",
     u"Messaggio originale|Messaggio Originale|Messaggio inoltrato",
     u"Da", u"Inviato|Data", u"A", u"Oggetto", u"Cc|Ccn|Rispondi a|Priorità|Importanza|Allegati"},
    {"Portuguese",
     u"Em {date} escreveu:|No dia {date} escreveu:|A {date} escreveu:|Às {date} escreveu:|{address} escreveu:|"
     u"{name} escreveu ({date}):|{name} escreveu em {date}:|{name} escreveu no dia {date}:|Citando {address}:",
     u"Mensagem original|Mensagem Original|Mensagem encaminhada",
     u"De", u"Enviado|Enviada|Data|Enviado em|Enviada em", u"Para", u"Assunto", u"Cc|Cco|Bcc|Responder a|Prioridade|Anexos"},
    {"Dutch",
     u"Op {date} schreef {name}:|Op {date} schreef:|Op {date} heeft {name} geschreven:|{address} schreef op {date}:|"
     u"{address} schreef:|Citeren {address}:",
     u"Oorspronkelijk bericht|Origineel bericht|Oorspronkelijke bericht|Doorgestuurd bericht",
     u"Van", u"Verzonden|Datum", u"Aan", u"Onderwerp", u"Cc|Bcc|CC|Antwoord aan|Urgentie|Bijlagen"},
    {"Swedish",
     u"Den {date} skrev {name}:|Den {date} skrev:|{date} skrev {name}:|{date} skrev:|{address} skrev:|"
     u"{name} skrev den {date}:|{name} skrev {date}:",
     u"Ursprungligt meddelande|Originalmeddelande|Vidarebefordrat meddelande",
     u"Från", u"Skickat|Datum", u"Till", u"Ämne", u"Kopia|Cc|Svara till|Prioritet|Bilagor"},
    {"Danish",
     u"Den {date} skrev {name}:|Den {date} skrev:|{name} skrev den {date}:|{address} skrev:",
     u"Oprindelig meddelelse|Original meddelelse|Oprindelig besked|Videresendt meddelelse",
     u"Fra", u"Sendt|Dato", u"Til", u"Emne", u"Cc|Bcc|Svar til|Vigtighed|Prioritet|Vedhæftet"},
    {"Norwegian",
     u"Den {date} skrev {name}:|{date} skrev {name}:|På {date} skrev {name}:|{name} skrev {date}:|"
     u"{date} skreiv {name}:|Den {date} skreiv {name}:",
     u"Opprinnelig melding|Original melding|Opphavleg melding|Videresendt melding",
     u"Fra|Frå", u"Sendt|Dato", u"Til", u"Emne", u"Kopi|Cc|Blindkopi|Svar til|Prioritet|Vedlegg"},
    {"Finnish",
     u"{date} kirjoitti:|{name} kirjoitti {date}:|{address} kirjoitti:",
     u"Alkuperäinen viesti|Välitetty viesti",
     u"Lähettäjä", u"Lähetetty|Päivämäärä|Päiväys", u"Vastaanottaja|Kenelle", u"Aihe", u"Kopio|Cc|Tärkeys|Liitteet"},
    {"Polish",
     u"{date} napisał(a):|{date} napisał:|{date} napisała:|W dniu {date} pisze:|W dniu {date} napisał(a):|"
     u"W dniu {date} napisał:|W dniu {date} napisała:|Dnia {date} napisał(a):|Dnia {date} napisał:|"
     u"Dnia {date} napisała:|{address} napisał(a):|Wiadomość napisana przez {name} w dniu {date}:|"
     u"Wiadomość napisana przez {name} dnia {date}:",
     u"Wiadomość oryginalna|Oryginalna wiadomość|Wiadomość przekazana|Treść oryginalnej wiadomości",
     u"Od|Nadawca", u"Wysłano|Wysłane|Data", u"Do|Adresat", u"Temat", u"DW|UDW|Kopia|Cc|Ważność|Załączniki"},
    {"Czech",
     u"{date} napsal(a):|{date} napsal:|{date} napsala:|Dne {date} napsal(a):|Dne {date} napsal:|Dne {date} napsala:|"
     u"{address} napsal(a):",
     u"Původní zpráva|Původní e-mail|Původní mail|Přeposlaná zpráva",
     u"Od", u"Odesláno|Datum", u"Komu", u"Předmět", u"Kopie|Skrytá kopie|Cc|Důležitost|Přílohy"},
    {"Slovak",
     u"{date} napísal(a):|{date} napísal:|{date} napísala:|Dňa {date} napísal(a):|Dňa {date} napísal:|"
     u"Dňa {date} napísala:",
     u"Pôvodná správa|Pôvodný e-mail|Preposlaná správa",
     u"Od", u"Odoslané|Dátum", u"Komu", u"Predmet", u"Kópia|Cc|Dôležitosť|Prílohy"},
    {"Hungarian",
     u"{name} ezt írta ({date}):|{name} ezt írta (időpont: {date}):|{date} ezt írta:|{date} írta:",
     u"Eredeti üzenet|Továbbított üzenet",
     u"Feladó|Küldő", u"Elküldve|Dátum|Küldve", u"Címzett", u"Tárgy", u"Másolatot kap|Cc|Fontosság|Melléklet"},
    {"Romanian",
     u"În {date} a scris:|Pe {date} a scris:|La {date} a scris:|{address} a scris:",
     u"Mesaj original|Mesajul original|Mesaj redirecționat",
     u"De la", u"Trimis|Data|Dată", u"Către|Catre", u"Subiect", u"Cc|Importanță|Atașări"},
    {"Turkish",
     u"{date} yazdı:|{address} yazdı:|{address} şunları yazdı ({date}):",
     u"Orijinal Mesaj|Özgün İleti|İletilen mesaj",
     u"Kimden|Gönderen", u"Gönderildi|Gönderme Tarihi|Tarih", u"Kime|Alıcı|Bilgi", u"Konu", u"Cc|Önem|Ekler"},
    {"Greek",
     u"Στις {date} έγραψε:|Την {date} έγραψε:|{address} έγραψε:",
     u"Αρχικό μήνυμα|Προωθημένο μήνυμα",
     u"Από", u"Στάλθηκε|Ημερομηνία", u"Προς", u"Θέμα", u"Κοιν.|Cc|Σπουδαιότητα|Συνημμένα"},
    {"Russian",
     u"{date} написал(а):|{date} написал:|{date} написала:|{date} пишет:|{address} написал(а):|"
     u"{address} пишет:|Вы писали {date}:",
     u"Исходное сообщение|Исходное письмо|Пересылаемое сообщение|Пересланное сообщение",
     u"От|От кого", u"Отправлено|Дата", u"Кому", u"Тема", u"Копия|Cc|Ответить|Важность|Вложения"},
    {"Ukrainian",
     u"{date} пише:|{date} написав(ла):|{date} написав:|{date} написала:|{address} пише:",
     u"Вихідне повідомлення|Початкове повідомлення|Переслане повідомлення",
     u"Від|Від кого", u"Надіслано|Дата", u"Кому", u"Тема", u"Копія|Cc|Важливість|Вкладення"},
    {"Japanese",
     u"{date}のメール:|{date}書きました:|{address}書きました:|{date}書いていました:|{date} wrote:",
     u"元のメッセージ|Original Message|転送メッセージ|元のメール",
     u"差出人|From|送信者|送信元", u"送信日時|日付|Date|Sent|日時", u"宛先|To|受信者", u"件名|Subject",
     u"Cc|Bcc|CC|返信先|重要度|添付ファイル"},
    {"Chinese, simplified",
     u"{address}于{date}写道:|{name}于{date}写道:|{date}写道:|在{date}写道:|于{date}写道:|{address}写道:",
     u"原始邮件|邮件原件|原邮件|回复的原邮件|转发邮件信息|转发的邮件",
     u"发件人|寄件人", u"发送时间|发送日期|日期|时间|发件日期", u"收件人", u"主题", u"抄送|抄送人|密送|重要性|附件"},
    {"Chinese, traditional",
     u"{address}於{date}寫道:|{name}於{date}寫道:|{date}寫道:|在{date}寫道:|於{date}寫道:|{address}寫道:",
     u"原始郵件|郵件原件|原始訊息|轉寄郵件",
     u"寄件者|寄件人|發件人", u"寄件日期|傳送時間|已傳送|日期|傳送日期", u"收件者|收件人", u"主旨|主題|標題",
     u"副本|密件副本|Cc|重要性|附件"},
    {"Korean",
     u"{date}님이 작성:|{date} 작성:|{date}이(가) 쓴 글:|{date} 쓴 글:|{date}님이 쓴 글:|{address}님이 작성:|"
     u"{date}에 {name} 씀:",
     u"원본 메시지|원본 메일|Original Message|전달된 메시지",
     u"보낸 사람|보낸사람|발신", u"보낸 날짜|날짜|보낸날짜|보낸 시간", u"받는 사람|받는사람|수신", u"제목",
     u"참조|숨은 참조|Cc|중요도|첨부"},
    {"Catalan", u"Missatge de {address} del dia {date}:|El {date} va escriure:",
     u"Missatge original|Missatge reenviat", u"De", u"Enviat|Data|Enviat el", u"Per a|A", u"Assumpte|Tema", u"Cc|Adjunts"},
    {"Bulgarian", u"На {date} написа:|{date} написа:",
     u"Оригинално съобщение|Препратено съобщение", u"От", u"Изпратено|Дата", u"До", u"Относно|Тема", u"Копие|Cc"},
    {"Croatian", u"{date} napisao je:|{date} je napisao/la:|{date} napisao:|{date} napisala:",
     u"Izvorna poruka|Proslijeđena poruka", u"Od|Šalje", u"Poslano|Datum", u"Prima|Za", u"Predmet", u"Kopija|Cc"},
    {"Serbian", u"{date} је написао/ла:|{date} je napisao/la:",
     u"Оригинална порука|Originalna poruka", u"Од|Od", u"Послато|Датум|Poslato|Datum", u"За|Za", u"Тема|Наслов|Naslov", u"Cc"},
    {"Slovenian", u"V {date} je oseba {address} napisala:|V {date} napisal:|{date} je napisal:|{date} piše:",
     u"Izvirno sporočilo|Posredovano sporočilo", u"Od", u"Poslano|Datum", u"Za", u"Zadeva", u"Kp|Cc"},
    {"Lithuanian", u"{date} rašė:", u"Pradinis laiškas|Persiųstas laiškas", u"Nuo", u"Išsiųsta|Data", u"Kam", u"Tema", u"Kopija|Cc"},
    {"Latvian", u"{date} rakstīja:", u"Sākotnējais ziņojums", u"No", u"Nosūtīts|Datums", u"Kam", u"Temats|Tēma", u"Kopija|Cc"},
    {"Estonian", u"Kuupäev {date} kirjutas {name}:|{date} kirjutas {name}:",
     u"Algne teade|Algsõnum|Edastatud kiri", u"Saatja", u"Saadetud|Kuupäev", u"Adressaat|Saaja", u"Teema", u"Koopia|Cc"},
    {"Vietnamese", u"Vào {date} đã viết:|Vào {date} viết:",
     u"Thư gốc|Tin nhắn gốc", u"Từ", u"Đã gửi|Ngày|Gửi", u"Tới|Đến", u"Chủ đề|Tiêu đề", u"Cc"},
    {"Thai", u"ในวันที่ {date} เขียนว่า:|เมื่อ {date} เขียนว่า:",
     u"ข้อความต้นฉบับ", u"จาก", u"ส่ง|วันที่|วันที่ส่ง", u"ถึง", u"เรื่อง|หัวข้อ", u"สำเนา|Cc"},
    {"Indonesian", u"Pada tanggal {date} menulis:|Pada {date} menulis:|{date} menulis:",
     u"Pesan asli|Pesan Asli", u"Dari", u"Dikirim|Tanggal", u"Kepada|Ke", u"Perihal|Subjek", u"Cc"},
    {"Hebrew", u"בתאריך {date}:|{date} כתב:|{date} כתבה:",
     u"הודעה מקורית", u"מאת", u"נשלח|תאריך", u"אל", u"נושא", u"עותק"},
    {"Arabic", u"في {date} كتب {name}:|في {date} كتب:|في {date} تمت كتابة ما يلي بواسطة {address}:",
     u"الرسالة الأصلية", u"من", u"تم الإرسال|التاريخ|تاريخ الإرسال", u"إلى", u"الموضوع", u"نسخة"},
};
// clang-format on

}  // namespace

std::span<const AttributionLanguage> AttributionLanguages() {
  return kLanguages;
}

StringView TakeAlternative(StringView& alternatives) {
  const StringView first = alternatives.substr(0, alternatives.find(u'|'));
  alternatives.remove_prefix(std::min(first.size() + 1, alternatives.size()));
  return first;
}

bool IsHeaderName(StringView word) {
  static const auto kNames = [] {
    std::unordered_set<Platform::String> names;
    for (const AttributionLanguage& language : kLanguages) {
      for (StringView rest : {language.From, language.Date, language.To, language.Subject, language.More}) {
        while (!rest.empty()) names.insert(Platform::FoldCase(TakeAlternative(rest)));
      }
    }
    return names;
  }();
  return kNames.contains(Platform::FoldCase(word));
}

}  // namespace Gateway
