"""Reads each mail of a folder with Python's own parser: FOLDER/NAME.eml beside FOLDER/NAME.txt, its expected text."""
import pathlib
import sys
from email import message_from_bytes, policy

for file in sorted(pathlib.Path(sys.argv[1]).glob("*.eml")):
    mail = message_from_bytes(file.read_bytes(), policy=policy.default)
    for part in mail.walk():
        faults = part.defects + [(n, d) for n, v in part.items() for d in v.defects]
        assert not faults, (file.name, faults)
    text = mail.get_body(("plain",)).get_content().replace("\r\n", "\n")
    expected = file.with_suffix(".txt").read_bytes().decode()
    assert f"{mail['subject']}\n{text}" == expected, (file.name, mail["subject"], text[:500], expected[:500])
    print(file.name)
