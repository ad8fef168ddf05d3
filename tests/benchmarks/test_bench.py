import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

import context
import bench
import workshop
from answers import Row
from questions import load_questions

#: Prints the next number of a file beside its working directory, and what it runs on.
COUNTING = """
import json, os, pathlib, sys
counter = pathlib.Path(sys.argv[1])
number = int(counter.read_text() or 0) + 1 if counter.exists() else 1
counter.write_text(str(number))
print("said before")
print(json.dumps({"number": number, "cores": len(os.sched_getaffinity(0)),
                  "files": len(os.listdir("."))}))
"""


class Contests(unittest.TestCase):
    def setUp(self):
        self.place = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.shop = self.enterContext(workshop.Workshop(context.TREE, self.place / "build"))

    def counting(self, name, one_core=False):
        return workshop.Contestant(name, (sys.executable, "-c", COUNTING, str(self.place / "count")),
                                   one_core)

    def test_theyTakeTurnsInBothOrders(self):
        medians = self.shop.contest([self.counting("a"), self.counting("b")], rounds=3)
        # a 1, b 2; b 3, a 4; a 5, b 6
        self.assertEqual(medians["a"]["number"], 4)
        self.assertEqual(medians["b"]["number"], 3)

    def test_eachHasAnEmptyDirectory(self):
        self.assertEqual(self.shop.run(self.counting("a"))["files"], 0)

    def test_oneCanBeKeptOnOneCore(self):
        self.assertEqual(self.shop.run(self.counting("a", one_core=True))["cores"], 1)

    def test_oneThatFailsIsNamed(self):
        failing = workshop.Contestant(
            "the failing one", (sys.executable, "-c", "raise SystemExit('no luck')"))
        with self.assertRaisesRegex(workshop.ContestantFailed, "the failing one.*\n.*no luck"):
            self.shop.run(failing)
        missing = workshop.Contestant("the missing one", (str(self.place / "nothing"),))
        with self.assertRaisesRegex(workshop.ContestantFailed, "the missing one"):
            self.shop.run(missing)

    def printing(self, line, **more):
        return workshop.Contestant("the printing one", (sys.executable, "-c", f"print('{line}')"),
                                   **more)

    def test_aLastLineWithoutFiguresIsAFailure(self):
        for line in ("no figures", "[1]", "1", '{"us": "fast"}', '{"us": null}', '{"us": NaN}'):
            with self.assertRaisesRegex(workshop.ContestantFailed, "the printing one.*no object"):
                self.shop.run(self.printing(line))

    def test_aFigureThatIsMissingIsAFailure(self):
        medians = self.shop.contest([self.printing('{"us": 1}')], rounds=1)
        with self.assertRaisesRegex(workshop.ContestantFailed, "the printing one.*'ms'"):
            _ = medians["the printing one"]["ms"]

    def test_aFigureThatMustBeJustSoIsLookedAtInEveryRun(self):
        self.shop.run(self.printing('{"bytes": 21.0}', expected={"bytes": 21}))
        with self.assertRaisesRegex(workshop.ContestantFailed, "20 for 'bytes' instead of 21"):
            self.shop.run(self.printing('{"bytes": 20}', expected={"bytes": 21}))
        with self.assertRaisesRegex(workshop.ContestantFailed, "printed no 'bytes'"):
            self.shop.run(self.printing('{"us": 20}', expected={"bytes": 21}))

    def test_aBuildTreeMayBeNamedFromHere(self):
        here = workshop.Workshop(context.TREE, "build/elsewhere")
        self.assertEqual(here.program("one"), str(pathlib.Path.cwd() / "build/elsewhere/benchmarks/one"))

    def test_theRoundsThatWereTakenAreKnown(self):
        self.shop.contest([self.counting("a")], rounds=3)
        self.shop.contest([self.counting("a")], rounds=1)
        self.shop.contest([self.counting("a")], rounds=3)
        self.assertEqual(self.shop.take_rounds(), [1, 3])
        self.assertEqual(self.shop.take_rounds(), [])

    def test_aTrialIsSmallAndRunsOnce(self):
        self.assertEqual((self.shop.size(1000, 10), self.shop.rounds()), (1000, 9))
        trial = workshop.Workshop(context.TREE, self.place, quick=True)
        self.assertEqual((trial.size(1000, 10), trial.rounds(3)), (10, 1))


class CommandLine(unittest.TestCase):
    def test_everyQuestionHasItsTableInTheDocument(self):
        text = bench.DOCUMENT.read_text(encoding="utf-8")
        for name in load_questions():
            self.assertEqual(text.count(f"<!-- bench {name} -->\n"), 1, name)

    def refuse(self, *arguments):
        """What is said to arguments that are refused."""
        said = io.StringIO()
        with contextlib.redirect_stderr(said), self.assertRaises(SystemExit) as end:
            bench.main(["--check", *arguments])
        self.assertEqual(end.exception.code, 2)
        return said.getvalue()

    def test_aMisspeltQuestionIsRefusedWithTheNamesOfAll(self):
        said = self.refuse("round-tripp")
        self.assertIn("no question 'round-tripp'", said)
        self.assertIn("queue", said)

    def test_aTrialIsNeitherKeptNorCompared(self):
        kept = str(sorted(bench.HISTORY.glob("*.json"))[0])
        self.assertIn("A trial (--quick) has no figures", self.refuse("--quick", "--against", kept))
        self.assertIn("A trial (--quick) has no figures", self.refuse("--quick", "--write"))

    def test_aFileThatCannotBeComparedIsNamedInASentence(self):
        said = self.refuse("--against", "no such file")
        self.assertRegex(said, r"^\./bench: no such file cannot be read: .*\n$")

    def test_argumentsCanBeCheckedWithoutMeasuring(self):
        said = io.StringIO()
        with contextlib.redirect_stdout(said):
            self.assertEqual(bench.main(["--check", "round-trip", "--build", "no/such/tree"]), 0)
        self.assertEqual(said.getvalue(), "")


class Asking(unittest.TestCase):
    class Question:
        TITLE = "A title"

        def __init__(self, answer):
            self.answer = answer

    def ask(self, answer, **options):
        shop = workshop.Workshop(context.TREE, "build", **options)
        with contextlib.redirect_stdout(io.StringIO()), contextlib.redirect_stderr(io.StringIO()):
            return bench.ask({"q": self.Question(answer)}, shop)

    def test_roundsAreKeptWithTheAnswers(self):
        def answer(shop):
            shop.note_rounds(5)
            return [Row("w", 3, "ms", (), 2, 1)]

        answers, circumstances, failed = self.ask(answer)
        self.assertEqual(answers, {"q": [Row("w", 3, "ms", (), 2, 1)]})
        self.assertEqual(circumstances["q"].rounds, [5])
        self.assertEqual(failed, [])

    def test_aTrialHasNoBounds(self):
        answers, _, _ = self.ask(lambda _: [Row("w", 3, "ms", (), 2, 1)], quick=True)
        self.assertEqual(answers, {"q": [Row("w", 3, "ms")]})

    def test_aFailureIsTheQuestionsAlone(self):
        def answer(_):
            raise workshop.ContestantFailed("no luck")

        self.assertEqual(self.ask(answer), ({}, {}, ["q"]))


if __name__ == "__main__":
    unittest.main()
