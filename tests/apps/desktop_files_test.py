"""What the desktop knows the program by, compared with the program itself. Checks by tools that
are not installed are skipped by name."""

import configparser
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

PROGRAM = os.environ["BRISEL"]
DATA = pathlib.Path(__file__).resolve().parents[2] / "data" / "desktop"
BUILT = pathlib.Path(os.environ["BRISEL_BUILD"]) / "data" / "desktop"
ID = "org.brisel.Brisel"
MIME = "{http://www.freedesktop.org/standards/shared-mime-info}"


def text_of(*command, **options):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True,
                            check=False, timeout=60, **options)
    return result.returncode, result.stdout + result.stderr


def help_of(command=None):
    """The options and the commands that the program offers, alone or after a command."""
    _, text = text_of(PROGRAM, *([command] if command else []), "--help")
    options, commands, part = set(), set(), ""
    for line in text.splitlines():
        if re.match(r"\w+:$", line):
            part = line
        elif part == "Options:" and line.startswith("  -"):
            options.update(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", line.split("  ")[1]))
        elif part == "Subcommands:" and line.startswith("  "):
            commands.add(line.split()[0])
    return options, commands


def needs(tool):
    return unittest.skipUnless(shutil.which(tool), f"{tool} is not installed")


class Help(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        own, cls.commands = help_of()
        cls.options = {None: own, **{name: help_of(name)[0] for name in cls.commands}}
        assert len(cls.commands) >= 4 and "--json" in cls.options["info"], cls.options

    def test_the_manual_page_tells_of_all_and_of_nothing_else(self):
        page = (BUILT / "brisel.1").read_text().replace("\\-", "-")
        told = set(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", re.sub(r"\\f.", " ", page)))
        self.assertEqual(told, set.union(*self.options.values()))
        for command in self.commands:
            self.assertRegex(page, rf"(?m)^\.SS {command}\b")
        _, version = text_of(PROGRAM, "--version")
        self.assertIn(f'"Brisel {version.split()[1]}"', page)

    @needs("bash")
    def test_bash_completes_all_and_nothing_else(self):
        def offered(*words):
            quoted = " ".join(f"'{word}'" for word in words)
            script = (f"source '{DATA / 'brisel.bash'}'; COMP_WORDS=({quoted}); "
                      f"COMP_CWORD={len(words) - 1}; _brisel; printf '%s\\n' \"${{COMPREPLY[@]}}\"")
            return set(text_of("bash", "-c", script, cwd=self.folder.name)[1].split("\n")) - {""}

        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        for name in ("a b.dim", "m.uml", "p.png", "t.txt"):
            (pathlib.Path(self.folder.name) / name).touch()
        for command, options in self.options.items():
            start = ["brisel", command] if command else ["brisel"]
            self.assertEqual(offered(*start, "-"), options, command)
        self.assertEqual(offered("brisel", ""), self.commands | {"a b.dim", "m.uml"})
        self.assertEqual(offered("brisel", "convert", "m.uml", ""), {"a b.dim", "m.uml", "p.png"})
        self.assertEqual(offered("brisel", "convert", "--to", "p"), {"png", "pdf"})

    @needs("fish")
    def test_fish_completes_all_and_nothing_else(self):
        def offered(line):
            home = {"HOME": self.home.name, "PATH": os.environ["PATH"]}
            _, text = text_of("fish", "--no-config", "-c",
                              f"source '{DATA / 'brisel.fish'}'; complete -C '{line}'", env=home)
            return {row.split("\t")[0] for row in text.splitlines()}

        self.home = tempfile.TemporaryDirectory()
        self.addCleanup(self.home.cleanup)
        self.assertLessEqual(self.commands, offered("brisel "))
        for command, options in self.options.items():
            start = f"brisel {command} " if command else "brisel "
            both = offered(start + "-") | offered(start + "--")
            self.assertEqual({word for word in both if word.startswith("-")}, options, command)

    def test_zsh_completes_all(self):
        text = (DATA / "brisel.zsh").read_text()
        branches = dict(re.findall(r"(?ms)^  (\w+|\*)\)\n(.*?);;", text))
        for command, options in self.options.items():
            branch = branches[command or "*"] + "-h --help"
            for option in options:
                self.assertRegex(branch, rf"(?<![\w-]){option}(?![\w-])", command)
        for command in self.commands:
            self.assertRegex(text, rf"'{command}:")
        if not shutil.which("zsh"):
            self.skipTest("zsh is not installed")
        self.assertEqual(text_of("zsh", "-n", DATA / "brisel.zsh"), (0, ""))


class Files(unittest.TestCase):
    def test_menu_entry_and_file_type_belong_together(self):
        entry = configparser.ConfigParser(interpolation=None)
        entry.read(DATA / f"{ID}.desktop")
        mime = xml.etree.ElementTree.parse(DATA / f"{ID}.xml").getroot()
        kind = mime.find(f"{MIME}mime-type").get("type")
        self.assertEqual(entry["Desktop Entry"]["MimeType"], kind + ";")
        self.assertTrue((DATA / (kind.replace("/", "-") + ".svg")).exists())
        meta = xml.etree.ElementTree.parse(BUILT / f"{ID}.metainfo.xml").getroot()
        self.assertEqual(meta.find("provides/mediatype").text, kind)
        self.assertEqual(meta.find("launchable").text, f"{ID}.desktop")

    def test_the_magic_is_how_the_program_writes(self):
        with tempfile.TemporaryDirectory() as folder:
            model = pathlib.Path(folder) / "m.ecore"
            model.write_text('<ecore:EPackage xmlns:ecore="http://www.eclipse.org/emf/2002/Ecore" '
                             'xmlns:xmi="http://www.omg.org/XMI" xmi:version="2.0" name="p"/>')
            _, told = text_of(PROGRAM, "convert", model, model.with_suffix(".dim"))
            begin = model.with_suffix(".dim").read_text()
        mime = xml.etree.ElementTree.parse(DATA / f"{ID}.xml").getroot()
        values = [match.get("value") for match in mime.iter(f"{MIME}match")]
        self.assertTrue(any(begin.startswith(value) for value in values), (begin, told))

    @needs("desktop-file-validate")
    def test_menu_entry_is_valid(self):
        self.assertEqual(text_of("desktop-file-validate", DATA / f"{ID}.desktop"), (0, ""))

    @needs("appstreamcli")
    def test_description_for_software_centres_is_valid(self):
        code, text = text_of("appstreamcli", "validate", "--no-net", BUILT / f"{ID}.metainfo.xml")
        self.assertEqual(code, 0, text)

    @needs("man")
    def test_manual_page_has_no_warnings(self):
        command = ["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", BUILT / "brisel.1"]
        result = subprocess.run([str(word) for word in command], stdout=subprocess.DEVNULL,
                                stderr=subprocess.PIPE, text=True, check=False, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    @needs("update-mime-database")
    def test_the_file_type_is_accepted(self):
        with tempfile.TemporaryDirectory() as folder:
            packages = pathlib.Path(folder) / "packages"
            packages.mkdir()
            shutil.copy(DATA / f"{ID}.xml", packages)
            code, text = text_of("update-mime-database", folder)
            self.assertEqual(code, 0, text)
            globs = (pathlib.Path(folder) / "globs2").read_text()
            self.assertIn("application/x-brisel-dim:*.dim", globs)


if __name__ == "__main__":
    unittest.main()
