import dataclasses
import pathlib
import tempfile
import types
import unittest

import context
import history
import report
from answers import Raw, Row, ratio

DOCUMENT = """\
# Performance

<!-- bench machine -->
<!-- end -->

Above.

<!-- bench first -->
an old table
<!-- end -->

Between.

<!-- bench second -->
another old table
<!-- end -->

Below.
"""


class Verdicts(unittest.TestCase):
    def test_aFigureIsMeasuredByItsBounds(self):
        def verdict(figure, limit, better):
            return Row("", figure, "x", limit=limit, better=better).verdict()

        self.assertEqual(verdict(21, 20, 15), "**missed**")
        self.assertEqual(verdict(20, 20, 15), "reached")
        self.assertEqual(verdict(15, 20, 15), "better")
        self.assertEqual(verdict(20, 20, None), "reached")
        self.assertEqual(verdict(20, None, None), "")

    def test_aRatioKeepsWhatItWasMadeOf(self):
        row = ratio("what", "ours", 60, "bare", 3, "µs", 30, 15)
        self.assertEqual(row.figure, 20)
        self.assertEqual(row.raw, (Raw("ours", 60, "µs"), Raw("bare", 3, "µs")))
        self.assertEqual(row.verdict(), "reached")


class Tables(unittest.TestCase):
    def test_aRowShowsFigureBoundsAndMedians(self):
        table = report.make_table([ratio("round trip", "ours", 60.04, "bare", 3, "µs", 20, 15)])
        self.assertEqual(table.splitlines()[2],
                         "| round trip | 20.0 x | 20 x | 15 x | **missed** "
                         "| ours 60.0 µs; bare 3.00 µs |")

    def test_numbersKeepThreeDigitsThatCount(self):
        shown = [report.format_number(value) for value in (0, 0.0456, 1.234, 45.67, 456.7, 12345.6)]
        self.assertEqual(shown, ["0", "0.046", "1.23", "45.7", "457", "12,346"])


class Comparison(unittest.TestCase):
    def compare(self, before, now):
        return self.compare_answers({"q": [Row("w", before, "x")]}, {"q": [Row("w", now, "x")]})

    def compare_answers(self, before, now, asked=("q",)):
        machine = {"commit": "abc", "processor": "a fast one"}
        former = history.Record("2001-02-03 04:05", machine, before, note="with a note")
        return report.make_comparison(former, now, asked)

    def test_aFigureThatIsNotablyWorseIsBold(self):
        self.assertIn("| q: w | 10.0 x | 12.0 x | **+20%** |", self.compare(10, 12))

    def test_whatIsBetterOrNearlyTheSameIsPlain(self):
        self.assertIn("| +10% |", self.compare(10, 11))
        self.assertIn("| -50% |", self.compare(10, 5))

    def test_aFigureThatWasNothingHasNoShare(self):
        self.assertIn("| **from nothing** |", self.compare(0, 5))

    def test_onlyWhatBothHaveIsCompared(self):
        text = self.compare_answers(
            {"q": [Row("w", 1, "x"), Row("gone", 1, "x")], "other": [Row("w", 1, "x")]},
            {"q": [Row("w", 1, "ms"), Row("w", 1, "x"), Row("new", 1, "x")]})
        self.assertEqual(text.split("\n\n"), [
            "Before: 2001-02-03 04:05, commit abc, a fast one, with a note.",
            "| | before | now | change |\n| --- | ---: | ---: | ---: |\n"
            "| q: w | 1.00 x | 1.00 x | +0% |",
            "Only before:\n- q: gone, 1.00 x",
            "Only now:\n- q: w, 1.00 ms\n- q: new, 1.00 x",
        ])
        self.assertIn("Nothing to compare", self.compare_answers({}, {"q": [Row("w", 1, "x")]}))

    def test_aQuestionThatFailedNowIsListed(self):
        text = self.compare_answers({"q": [Row("w", 1, "x")], "r": [Row("v", 2, "x")]},
                                    {"q": [Row("w", 1, "x")]}, asked=("q", "r"))
        self.assertIn("Only before:\n- r: v, 2.00 x", text)


class Document(unittest.TestCase):
    RECORD = history.Record("2001-02-03 04:05", {"commit": "abc", "processor": "a fast one"},
                            {"first": [Row("new row", 7, "ms")]},
                            {"first": history.Circumstances([3, 5], 0.25)})

    def rewrite(self, is_complete):
        with tempfile.TemporaryDirectory() as place:
            document = pathlib.Path(place) / "performance.md"
            document.write_text(DOCUMENT, encoding="utf-8")
            questions = {"first": types.SimpleNamespace(TITLE="A title")}
            report.rewrite(document, questions, self.RECORD, is_complete)
            report.rewrite(document, questions, self.RECORD, is_complete)
            return document.read_text(encoding="utf-8")

    def test_onlyTheTablesOfTheRecordAreWrittenAnew(self):
        text = self.rewrite(is_complete=True)
        self.assertEqual(text.count("| new row | 7.00 ms |"), 1)
        self.assertNotIn("an old table", text)
        self.assertIn("another old table", text)
        self.assertIn("A title, 2001-02-03 04:05, commit abc, load 0.2, 3 and 5 rounds:", text)
        self.assertEqual(text.count("| processor | a fast one |"), 1)
        for kept in ("Above.", "Between.", "Below."):
            self.assertIn(kept, text)

    def test_oneQuestionLeavesTheMachineOfTheOthers(self):
        text = self.rewrite(is_complete=False)
        self.assertNotIn("| processor |", text)
        self.assertIn("A title, 2001-02-03 04:05, commit abc, a fast one, load 0.2", text)

    def test_oneRoundIsCalledOne(self):
        for rounds, said in (([1], "load 0.2, 1 round:"), ([9], "load 0.2, 9 rounds:"),
                             ([], "load 0.2:")):
            record = dataclasses.replace(
                self.RECORD, circumstances={"first": history.Circumstances(rounds, 0.25)})
            self.assertTrue(report.make_caption("t", "first", record, True).endswith(said))
        old = dataclasses.replace(self.RECORD, circumstances={})
        self.assertEqual(report.make_caption("t", "first", old, True),
                         "t, 2001-02-03 04:05, commit abc:")


class History(unittest.TestCase):
    def setUp(self):
        self.place = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def test_aRecordComesBackAsItWasKept(self):
        record = history.Record("2001-02-03 04:05", {"processor": "a fast one"},
                                {"q": [ratio("wörk", "ours", 60, "bare", 3, "µs", 20, 15),
                                       Row("plain", 4, "ms")]},
                                {"q": history.Circumstances([3, 9], 0.5)}, "a note")
        path = history.write(self.place / "history", record)
        self.assertEqual(path.name, "2001-02-03-0405.json")
        self.assertEqual(history.read(path), record)

    def test_twoOfOneMinuteAreBothKept(self):
        records = [history.Record("2001-02-03 04:05", {"commit": name}, {}) for name in "abc"]
        paths = [history.write(self.place, record) for record in records]
        self.assertEqual([path.name for path in paths],
                         ["2001-02-03-0405.json", "2001-02-03-0405-2.json",
                          "2001-02-03-0405-3.json"])
        self.assertEqual([history.read(path) for path in paths], records)

    def test_fieldsOfLaterVersionsArePassedOver(self):
        path = self.place / "later.json"
        path.write_text('{"date": "d", "machine": {}, "more": 1, "answers": {"q": [{"what": "w",'
                        '"figure": 1, "unit": "x", "raw": [{"name": "n", "median": 2, "unit": "ms",'
                        '"more": 1}], "more": 1}]}}', encoding="utf-8")
        self.assertEqual(history.read(path).answers,
                         {"q": [Row("w", 1, "x", (Raw("n", 2, "ms"),))]})

    def test_aFileThatIsNoRecordIsNamedInASentence(self):
        bad = self.place / "bad.json"
        for text in ("", "no JSON", "[]", "{}", '{"date": "d", "machine": {}, "answers": []}',
                     '{"date": "d", "machine": {}, "answers": {"q": [1]}}',
                     '{"date": "d", "machine": {}, "answers": {"q": [{"what": "w"}]}}',
                     '{"date": "d", "machine": {}, "answers": {"q": [{"what": "w", "figure": "f",'
                     ' "unit": "x"}]}}'):
            bad.write_text(text, encoding="utf-8")
            with self.assertRaisesRegex(history.UnreadableRecord, "bad.json is no record"):
                history.read(bad)
        bad.write_bytes(b"\xff\xfe")
        with self.assertRaisesRegex(history.UnreadableRecord, "bad.json is no record"):
            history.read(bad)
        for path in (self.place / "missing.json", self.place):
            with self.assertRaisesRegex(history.UnreadableRecord, f"{path} cannot be read: .+[.]"):
                history.read(path)

    def test_theKeptRecordsCanBeRead(self):
        kept = sorted((context.TREE / "benchmarks" / "history").glob("*.json"))
        self.assertGreaterEqual(len(kept), 2)
        for path in kept:
            record = history.read(path)
            self.assertRegex(record.machine["commit"], r"^[0-9a-f]{7,}(-dirty)?$", path.name)
            self.assertTrue(record.answers, path.name)


if __name__ == "__main__":
    unittest.main()
