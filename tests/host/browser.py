"""Opens the pages of `tvmail project export --html` in a headless Chromium: hostile texts are shown as text, to the
letter, and no script runs.
  browser.py TVMAIL        77 if there is no Chromium
"""
import html.parser
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

RUN = "document.documentElement.innerHTML='a script ran'"
HOSTILE = [
    f"<script>{RUN}</script>", f'<img src=x onerror="{RUN}">', f'"><svg onload="{RUN}">', f"'><body onload='{RUN}'>",
    f"</div></article></main></title></style><script>{RUN}</script>", f'<a href="javascript:{RUN}">link</a>',
    f"<iframe srcdoc='<script>parent.{RUN}</script>'></iframe>", f"<!--><script>{RUN}</script>",
    "<meta http-equiv=refresh content='0;url=data:text/html,ran'>", "&lt;b&gt; &amp;amp; &#60;",
    "<style>*{display:none}</style>", "Grüße 日本語 🚀 \u202eabc\u202c", "a  b\tc\n\n  d",
    f"\u2028<plaintext>{RUN}"]


class Page(html.parser.HTMLParser):
    """The elements of a page, the text of its body, and the links."""

    def __init__(self, source):
        super().__init__()
        self.elements, self.texts, self.links, self.open = set(), [], [], []
        self.feed(source)

    def handle_starttag(self, tag, attributes):
        self.elements.add(tag)
        self.open.append(tag)
        attributes = dict(attributes)
        self.links += [attributes["href"]] if "href" in attributes else []
        if tag in ("title", "h1", "div", "bdi"):
            self.texts.append((tag, ""))

    def handle_endtag(self, tag):
        if tag in self.open:
            del self.open[len(self.open) - 1 - self.open[::-1].index(tag):]

    def handle_data(self, data):
        if self.open and self.texts and self.open[-1] == self.texts[-1][0]:
            self.texts[-1] = (self.open[-1], self.texts[-1][1] + data)


def shown(browser, folder, file):
    """The page as the browser has it after its scripts have run."""
    command = [browser, "--headless", "--disable-gpu", f"--user-data-dir={folder}/browser", "--dump-dom", file.as_uri()]
    command += ["--no-sandbox"] if os.geteuid() == 0 else []
    return Page(subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=60, check=True,
                               env={**os.environ, "HOME": folder, "LC_ALL": "C.UTF-8"}).stdout.decode())


def export(program, root):
    """Makes a project of the hostile texts and exports its pages; returns the discussions' titles."""
    password = root / "password"
    password.write_text("secret\n")
    password.chmod(0o600)

    def tvmail(*arguments, text=""):
        subprocess.run([program, *map(str, arguments)], input=text.encode(), check=True, stdout=subprocess.DEVNULL,
                       env={**os.environ, "TALVANE_HOME": str(root / "home"), "LC_ALL": "C.UTF-8"})

    project = root / "p.TVS"
    titles = [" ".join(text.split()) for text in HOSTILE]
    tvmail("init")
    tvmail("project", "create", project, "--name", HOSTILE[0], "--user", "admin", "--password-file", password)
    for title in titles:
        tvmail("project", "add-discussion", project, "--title", title)
    for text in HOSTILE:
        tvmail("project", "post", project, "--discussion", 1, "--user", "admin", text=text)
    tvmail("project", "export", project, "--html", root / "pages")
    return titles


def check(show, root, titles):
    """Returns what is wrong."""
    control = root / "control.html"
    control.write_text(f"<title>t</title><div>safe</div><script>{RUN}</script>")
    faults = ["a page's script runs in this browser"] if show(control).texts else []
    index = show(root / "pages/index.html")
    replies = [item for text in HOSTILE for item in (("bdi", "admin"), ("div", text))]
    for page, expected in [
        (index, [("title", HOSTILE[0]), ("h1", HOSTILE[0])] + [("bdi", title) for title in titles]),
        (show(root / "pages/discussion-1.html"), [("title", titles[0]), ("h1", titles[0])] + replies),
        (show(root / f"pages/discussion-{len(titles)}.html"), [("title", titles[-1]), ("h1", titles[-1])]),
    ]:
        if page.texts != expected:
            faults.append(f"a page shows its texts: {page.texts!r} instead of {expected!r}")
        faults += [f"no page has {element}" for element in page.elements & {"script", "img", "svg", "iframe"}]
    if index.links != [f"discussion-{number + 1}.html" for number in range(len(titles))]:
        faults.append(f"the list leads to each discussion: {index.links}")
    return faults


def main():
    browser = shutil.which("chromium")
    if not browser:
        print("skipped: there is no chromium (scripts/install-packages.sh check installs it)")
        return 77
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        faults = check(lambda file: shown(browser, folder, file), root, export(sys.argv[1], root))
    for fault in faults:
        print(f"not so: {fault}")
    return 1 if faults else 0


sys.exit(main())
