#!/usr/bin/env python3
"""Tests of what zetlaser-job tells the system of itself: test_documents.py PROGRAM SOURCE_DIR [unittest arguments]

The manual page is read by groff, and the completions are asked for in real shells. Where one isn't installed, its tests
are skipped. Each test runs in a folder of its own below the current one."""

import os
import pty
import re
import select
import shlex
import shutil
import subprocess
import time
import unittest

from tool_test import PANEL, SOURCE, ToolTest, main

COVER = SOURCE / "examples" / "cover"


def needs(program, package):
    return unittest.skipUnless(shutil.which(program), f"{program} is not installed (Debian: {package})")


class DocumentTest(ToolTest):
    def tell(self, *arguments):
        """What the tool tells without a fault."""
        result = self.run_tool(*arguments)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout

    def commands(self):
        """The names of the commands; the empty one is that of a call without a name."""
        listed = self.tell("--help").partition("\nCommands ")[2].partition("\n\n")[0]
        names = re.findall(r"(?m)^  (\w+) ", listed)
        self.assertGreater(len(names), 1)
        return ["", *names]

    def usages(self, command):
        """The options of a command as its --help shows them: "--type TYPE"."""
        found = re.findall(r"(?m)^  (-.+)$", self.tell(*command.split(), "--help"))
        self.assertGreater(len(found), 0)
        return found

    def flags(self, command):
        """The flags of a command as they are typed: "--output-rosette", "--no-output-rosette"."""
        flags = set()
        for usage in self.usages(command):
            for flag in re.findall(r"(?:^|, )(-\S+?)(?=,|\s|$)", usage):
                flags |= {flag.replace("[no-]", ""), flag.replace("[no-]", "no-")}
        return flags

    def examples(self):
        found = []
        for command in self.commands():
            text = self.tell(*command.split(), "--help").partition("\nExamples:\n")[2].partition("\n\n")[0]
            found += re.findall(r"(?m)^  (zetlaser-job .+)$", text)
        self.assertGreater(len(found), 3)
        return found


@needs("groff", "groff-base")
class Page(DocumentTest):
    def render(self, *options):
        page = self.folder / "zetlaser-job.1"
        page.write_text(self.tell("--man"), encoding="ascii")
        result = subprocess.run(["groff", "-man", "-ww", "-Tascii", *options, page], capture_output=True, text=True,
                                timeout=60, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout

    def test_the_page_has_no_fault(self):
        self.render()
        page = self.folder / "zetlaser-job.1"
        page.write_text(page.read_text() + ".nonsense\n\\fZ", encoding="ascii")
        result = subprocess.run(["groff", "-man", "-ww", "-Tascii", page], capture_output=True, text=True, timeout=60,
                                check=False)
        self.assertIn("nonsense", result.stderr)  # so faults are told

    def test_the_page_tells_all_that_help_tells(self):
        text = self.render("-P-cbou", "-rLL=1000n")
        for heading in ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "COMMANDS", "EXIT STATUS", "FILES", "EXAMPLES"):
            self.assertRegex(text, rf"(?m)^{heading}$")
        sections = dict(re.findall(r"(?ms)^([A-Z ]+)$(.*?)(?=^[A-Z]|\Z)", text))
        for command in self.commands():
            shown = self.tell(*command.split(), "--help")
            told = sections["OPTIONS"] if not command else re.search(
                rf"(?ms)^   zetlaser-job {command}$(.*?)(?=^   \w|\Z)", sections["COMMANDS"])[1]
            for usage in self.usages(command):
                with self.subTest(command=command, usage=usage):
                    self.assertRegex(told, rf"(?m)^ +{re.escape(usage)}( |$)")
            usage = re.match(r"Usage: (.+)", shown)[1]
            self.assertIn(f"\n       {usage}\n", sections["SYNOPSIS"])
            for code, meaning in re.findall(r"(?m)^  (\d[\d +N]*?)  (.+)$", shown.partition("\nExit codes:\n")[2]):
                self.assertRegex(sections["EXIT STATUS"], rf"(?m)^ +{re.escape(code)}\s+{re.escape(meaning)}$")
        for example in self.examples():
            self.assertIn(f"\n       {example}\n", sections["EXAMPLES"])
        for line in self.tell("--list-types").splitlines():
            pattern, name = re.search(r"\((\S+)\)$", line)[1], line.split()[0]
            self.assertRegex(sections["FILES"], rf"(?m)^ +{re.escape(pattern)}\s.*\(--type {name}\)\.$")


class Manual(DocumentTest):
    def test_the_page_is_the_same_each_time(self):
        page = self.tell("--man")
        self.assertTrue(page.startswith(".TH ZETLASER\\-JOB 1 "))
        self.assertEqual(self.tell("--man"), page)

    def test_the_examples_work(self):
        for file in (PANEL, COVER / "plies.csv", COVER / "cover.step"):
            shutil.copy(file, self.folder)
        self.write("virtek.json", {"type": "virtek", "output": "panel.ply"})
        for example in self.examples():
            with self.subTest(example=example):
                result = self.run_tool(*shlex.split(example)[1:])
                self.expect(result, 0)
                self.assertNotEqual(result.stdout, "")
                for name in re.findall(r"[\w-]+\.(?:ply|lap|layup\.json)\b", example):
                    self.assertTrue((self.folder / name).exists(), name)


class ShellTest(DocumentTest):
    def setUp(self):
        super().setUp()
        self.script = self.folder / "zetlaser-job.completion"
        self.script.write_text(self.tell("--completion", self.shell), encoding="utf-8")
        self.place = self.folder / "place"  # where command lines are completed
        (self.place / "sub folder").mkdir(parents=True)
        for name in ("part.layup.json", "part two.json", "part.step", "part.PLY"):
            (self.place / name).touch()

    def type(self, line, expected, *arguments, **environment):
        """Types a command line into the shell, Tab and Enter; \a expected are the arguments that the shell then calls
        the tool with."""
        leader, follower = pty.openpty()
        process = subprocess.Popen(arguments, cwd=self.place, stdin=follower, stdout=follower, stderr=follower,
                                   start_new_session=True, env={**os.environ, "TERM": "dumb", "INPUTRC": "/dev/null",
                                                                **environment})
        os.close(follower)
        try:
            self.read_until(leader, "<ready>")
            os.write(leader, line.encode() + b"\t\n")
            self.read_until(leader, "called: " + "".join(f"<{word}>" for word in expected) + "<end>")
        finally:
            process.kill()
            process.wait()
            os.close(leader)

    def read_until(self, leader, text):
        shown = ""
        end = time.monotonic() + 120
        while text not in shown:
            ready, _, _ = select.select([leader], [], [], max(0, end - time.monotonic()))
            self.assertTrue(ready, f"expected {text}, found {shown}")
            shown += os.read(leader, 4096).decode(errors="replace")


class Bash(ShellTest):
    shell = "bash"

    def complete(self, *words):
        """What bash offers for the last of the words."""
        driver = "\n".join((f"source {shlex.quote(str(self.script))}",
                            f"COMP_WORDS=(zetlaser-job {shlex.join(words)})", f"COMP_CWORD={len(words)}",
                            "_zetlaser_job", 'printf "%s\\n" "${COMPREPLY[@]}"'))
        result = subprocess.run(["bash", "--noprofile", "--norc", "-u", "-c", driver], cwd=self.place,
                                capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return sorted(line for line in result.stdout.splitlines() if line)

    def test_each_flag_of_help_is_offered(self):
        own = {command: self.flags(command) for command in self.commands()}
        self.assertIn("--no-output-rosette", own[""])
        for command, flags in own.items():
            with self.subTest(command=command):
                offered = set(self.complete(*command.split(), "-"))
                self.assertLessEqual(flags, offered)
                self.assertLessEqual(offered, flags | own[""])  # no other, but for those that are shared
        self.assertIn("--plies", self.complete("preview", "--pl"))
        self.assertNotIn("--plies", self.complete("help", "-"))

    def test_commands_and_files_begin_a_line(self):
        self.assertEqual(self.complete("pre"), ["preview"])
        self.assertEqual(self.complete(""), sorted([*self.commands()[1:], "part two.json", "part.layup.json", "sub folder"]))
        self.assertEqual(self.complete("help", ""), sorted(self.commands()[1:]))
        self.assertEqual(self.complete("help", "pre"), ["preview"])
        self.assertEqual(self.complete("help", "preview", ""), [])

    def test_options_are_offered_by_their_beginning(self):
        self.assertEqual(self.complete("part.layup.json", "--max"), ["--max-length"])
        self.assertEqual(self.complete("--no-output-r"), ["--no-output-rosette"])
        self.assertEqual(self.complete("preview", "--si"), ["--side", "--size"])
        self.assertEqual(self.complete("--side"), [])  # an option of the preview alone
        self.assertEqual(self.complete("--", "--max"), [])

    def test_choices_are_offered_behind_their_option(self):
        self.assertEqual(self.complete("--type", "apt"), ["apt", "apt-2", "apt-sl"])
        self.assertEqual(self.complete("--type", "=", "vi"), ["virtek"])  # as bash parts "--type=vi"
        self.assertEqual(self.complete("--type", "="), self.complete("--type", ""))
        self.assertEqual(self.complete("--type=vi"), ["--type=virtek"])  # and where "=" is no word break
        self.assertEqual(self.complete("preview", "a.json", "--side", ""),
                         sorted("auto top bottom front back left right oblique".split()))
        self.assertEqual(self.complete("--side", "t"), [])
        self.assertEqual(self.complete("preview", "--formats", "html,p"), ["html,png"])
        self.assertEqual(self.complete("--completion", ""), ["bash", "fish", "zsh"])
        self.assertEqual(self.complete("check", "a.ply", "--type", "vir"), ["virtek"])
        self.assertEqual(self.complete("check", "part.PLY", "part.st"), ["part.step"])  # as many files as one likes
        for usage in self.usages(""):
            for flag, choices in re.findall(r"^(--\S+) (\S+\|\S+)$", usage):
                self.assertEqual(self.complete(flag, ""), sorted(choices.split("|")))

    def test_nothing_is_offered_where_nothing_is_known(self):
        self.assertEqual(self.complete("--max-length", ""), [])
        self.assertEqual(self.complete("--plies", "p"), [])
        self.assertEqual(self.complete("--output-rosette", "="), [])
        self.assertEqual(self.complete("part.layup.json", ""), [])  # one layup file is enough

    def test_files_are_offered_by_suffix(self):
        self.assertEqual(self.complete("--settings", "pa"), ["part two.json", "part.layup.json"])
        self.assertEqual(self.complete("--output", "part."), ["part.PLY", "part.layup.json", "part.step"])
        self.assertEqual(self.complete("preview", "--output-type", "flat", "part"), ["part two.json", "part.layup.json"])
        self.assertEqual(self.complete("--output-rosette", "part"), ["part two.json", "part.layup.json"])
        self.assertEqual(self.complete("--target-file-path", ""), ["sub folder"])
        self.assertEqual(self.complete("--", "part"), ["part two.json", "part.layup.json"])

    def test_a_user_gets_it_with_tab(self):
        setup = self.folder / "setup"
        setup.write_text(f"source {shlex.quote(str(self.script))}\nPS1='<ready>'\n"
                         "zetlaser-job() { printf 'called: '; printf '<%s>' \"$@\"; echo '<end>'; }\n", encoding="utf-8")
        for line, expected in (("prev", ["preview"]), ("preview --side=fr", ["preview", "--side=front"]),
                               ("--type vir", ["--type", "virtek"]), ("--max", ["--max-length"]),
                               ("part.l", ["part.layup.json"]), ("part\\ t", ["part two.json"]),
                               ("'part t", ["part two.json"]), ("--settings=part.l", ["--settings=part.layup.json"]),
                               ("--target-file-path su", ["--target-file-path", "sub folder/"]),
                               ("preview --formats html,s", ["preview", "--formats", "html,svg"])):
            with self.subTest(line=line):
                self.type("zetlaser-job " + line, expected, "bash", "--noprofile", "--rcfile", setup, "-i")


@needs("zsh", "zsh")
class Zsh(ShellTest):
    shell = "zsh"

    def test_each_flag_of_help_is_in_the_script(self):
        script = self.script.read_text(encoding="utf-8")
        for command in self.commands():
            for flag in self.flags(command):
                self.assertRegex(script, rf"(?m)^ +'\*?{flag}[=\[]")

    def test_a_user_gets_it_with_tab(self):
        (self.folder / "functions").mkdir()
        shutil.copy(self.script, self.folder / "functions" / "_zetlaser-job")
        (self.folder / ".zshrc").write_text(
            f"fpath=({shlex.quote(str(self.folder / 'functions'))} $fpath)\nautoload -U compinit\n"
            "compinit -u -D\nPS1='<ready>'\nunsetopt zle_bracketed_paste prompt_cr\n"
            "zetlaser-job() { printf 'called: '; printf '<%s>' \"$@\"; echo '<end>'; }\n", encoding="utf-8")
        for line, expected in (("prev", ["preview"]), ("preview --side=fr", ["preview", "--side=front"]),
                               ("--type vir", ["--type", "virtek"]), ("part.l", ["part.layup.json"]),
                               ("preview part.l", ["preview", "part.layup.json"]), ("help prev", ["help", "preview"]),
                               ("--settings part.l", ["--settings", "part.layup.json"]),
                               ("--target-file-path su", ["--target-file-path", "sub folder"]),
                               ("preview --formats html,s", ["preview", "--formats", "html,svg"])):
            with self.subTest(line=line):
                self.type("zetlaser-job " + line, expected, "zsh", "-d", "-i", ZDOTDIR=str(self.folder))


@needs("fish", "fish")
class Fish(ShellTest):
    shell = "fish"

    def complete(self, line):
        driver = f"source {shlex.quote(str(self.script))}; complete -C {shlex.quote('zetlaser-job ' + line)}"
        result = subprocess.run(["fish", "--no-config", "-c", driver], cwd=self.place, capture_output=True, text=True,
                                timeout=60, check=False, env={**os.environ, "HOME": str(self.folder)})
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return [line.partition("\t")[0] for line in result.stdout.splitlines()]

    def test_each_flag_of_help_is_offered(self):
        for command in self.commands():
            with self.subTest(command=command):
                offered = self.complete(f"{command} -") + self.complete(f"{command} --")
                self.assertLessEqual(self.flags(command), set(offered))

    def test_words_are_offered_where_they_fit(self):
        self.assertEqual(self.complete("prev"), ["preview"])
        self.assertEqual(self.complete("--type apt-"), ["apt-2", "apt-sl"])
        self.assertEqual(self.complete("preview --side=fr"), ["--side=front"])
        self.assertEqual(self.complete("preview --formats html,p"), ["html,png"])
        self.assertNotIn("front", self.complete("--side fr"))
        self.assertEqual(self.complete("help prev"), ["preview"])
        self.assertEqual(self.complete("--max-length "), [])
        self.assertEqual(self.complete("--target-file-path s"), ["sub folder/"])
        self.assertIn("part.layup.json", self.complete("part"))
        self.assertIn("part.layup.json", self.complete("--settings part"))
        self.assertIn("part.step", self.complete("--output part."))


if __name__ == "__main__":
    main()
