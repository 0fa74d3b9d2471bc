"""Keeps the catalogues and the texts in the sources together; see scripts/translate."""
import re
import subprocess
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
CATALOGUES = ROOT / "translations"

STRING = r'"((?:[^"\\]|\\.)*)"'
TRANSLATED = re.compile(rf"qsTr\({STRING}\)")
# What a control shows or a screen reader says. Elsewhere a string counts when it reads as a text.
SHOWN = re.compile(rf"\b(?:text|title|label|Accessible\.(?:name|description)): .*?{STRING}")
READS_AS_TEXT = re.compile(r"^[A-Z][a-z]|[a-z] [a-z]")
# Also the program's name, and a reading as the panel shows it.
NO_WORDS = re.compile(r"[^A-Za-z]*|[Mm]eterkin ?|[0-9]+ RPM")
SENTENCE = re.compile(r'QStringLiteral\(\s*"([A-Z][a-z]+ (?:%1 )?[a-z][^"]*)"')
TO_PROGRAMS = "sendErrorReply("


def update(files):
    tools = subprocess.run(["qmake6", "-query", "QT_HOST_BINS"], check=True, capture_output=True,
                           text=True).stdout.strip()
    command = [f"{tools}/lupdate", "-no-obsolete", "-locations", "none", "-source-language", "en",
               "-I", "Meterkin", "-extensions", "cpp,h,mm,qml", "Meterkin", "-ts", *files]
    # It warns of each class that it meets before its header.
    subprocess.run(command, cwd=ROOT, check=True, capture_output=True)


def faults_of(file):
    """What a catalogue lacks, or has in another form than the sources."""
    with tempfile.TemporaryDirectory() as folder:
        copy = Path(folder) / file.name
        copy.write_bytes(file.read_bytes())
        update([copy])
        if copy.read_bytes() != file.read_bytes():
            yield "the sources have other texts: run scripts/translate"
    for message in ElementTree.parse(file).iter("message"):
        source = message.findtext("source")
        translation = message.find("translation")
        if translation.get("type") or not translation.text:
            yield f"not translated: {source!r}"
        elif sorted(re.findall("%.", source)) != sorted(re.findall("%.", translation.text)):
            yield f"other values than in: {source!r}"


def plain_texts():
    """Texts in the sources that no translation reaches."""
    for file in sorted((ROOT / "Meterkin").rglob("*")):
        if file.suffix == ".qml":
            for number, line in enumerate(file.read_text().splitlines(), 1):
                if line.lstrip().startswith(("import ", "// ", "sequence: ")):
                    continue
                line = TRANSLATED.sub("", line)
                texts = filter(READS_AS_TEXT.search, re.findall(STRING, line))
                for text in {*texts, *SHOWN.findall(line)}:
                    if not NO_WORDS.fullmatch(text):
                        yield f"{file.relative_to(ROOT)}:{number}: {text!r} is not translated"
        elif file.suffix in (".cpp", ".h", ".mm"):
            source = file.read_text()
            for found in SENTENCE.finditer(source):
                line = source[source.rfind("\n", 0, found.start()):found.start()]
                if TO_PROGRAMS not in line:
                    yield f"{file.relative_to(ROOT)}: {found[1]!r} is not translated"


def main(arguments):
    if arguments == ["--check"]:
        faults = list(plain_texts())
        for file in sorted(CATALOGUES.glob("*.ts")):
            faults += [f"{file.name}: {fault}" for fault in faults_of(file)]
        print("\n".join(faults) or "Every text is translated.")
        return 1 if faults else 0
    new = [CATALOGUES / f"meterkin_{language}.ts" for language in arguments]
    update(sorted({*CATALOGUES.glob("*.ts"), *new}))
    for file in sorted(CATALOGUES.glob("*.ts")):
        for fault in faults_of(file):
            print(f"{file.name}: {fault}")
    return 0
