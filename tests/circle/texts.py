"""What users type: texts that differ by a seed, with the lines that mail programs like to change."""
import re

SENTENCES = {
    "english": [
        "Friday works for me, if the hall is free.",
        "I checked the numbers: 5 < 7 && 7 > 5, and 1+1=2 (=3D is no sum).",
        "Please read https://example.org/plan?day=2&hall=b first.",
        "The van needs 100 % of the yard; nobody parks there.", "It's done."],
    "typographic": ["Could you also ask Dora – she has the “green” key?", "It’s 5 °C… ½ of ‘it’ for 20 €."],
    "german": ["Grüße aus Köln!", "Das Tor öffnet erst um neun, außer am Dienstag.", "Änderungen bitte an mich.",
               "Zwölf Boxkämpfer jagen Viktor quer über den großen Sylter Deich."],
    "japanese": ["金曜日で結構です。", "会議の資料を送りました、ご確認ください。", "よろしくお願いいたします!",
                 "場所は「第二会議室」です。", "ABCとかなとカナとを混ぜて書きます。"],
    "emoji": ["Ready 🚀 for launch 🎉.", "Thumbs up 👍🏽 from the whole family 👩‍👩‍👧‍👦.", "Ça va? Да. 好的。 😀"],
}
LINES = ["> this line is my own", ">> and this", "From now on we meet at ten.", "From: nobody, just a line", ".", "..",
         "-- ", "--", "* first", "  - an indented line", "1. a list", "a  b   c", "=====", "_under_ *stars* /slashes/",
         "&lt;b&gt; &amp;", "Subject: not a field", "On Monday Bob wrote: no."]
ENDS = ["Best regards\nAnn", "-- \nCem, yard 4", "So what?!", "And more to come…", "(more on Monday)", "See below:",
        "Bye :-)", "> quoted end", "--\nB."]


def typed(random, start, languages, short=False, kept=".* +"):
    """Some paragraphs that begin with start, of short lines if wanted. Only the lines that match kept have blanks at
    their ends."""
    paragraphs = [start + " " + random.choice(SENTENCES[languages[0]])]
    for _ in range(random.randrange(1, 6)):
        sentences = random.choices(SENTENCES[random.choice(languages)], k=random.choice([1, 2, 2, 9]))
        paragraphs.append(("\n" if short else random.choice([" ", "\n"])).join(sentences))
        if random.random() < 0.6:
            paragraphs.append("\n".join(random.choices(LINES, k=random.randrange(1, 4))))
    text = random.choice(["\n\n", "\n", "\n\n\n"]).join(paragraphs)
    if random.random() < 0.5:
        text = text.replace(".\n", ".  \n")
    text += "\n\n" + random.choice(ENDS) if random.random() < 0.7 else ""
    lines = (line if re.fullmatch(kept, line) else line.rstrip() for line in text.split("\n"))
    return "\n".join(lines).rstrip()
