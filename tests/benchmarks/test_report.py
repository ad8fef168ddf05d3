import pathlib
import tempfile
import types
import unittest

import context  # pylint: disable=unused-import
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
        return report.make_comparison({"q": [Row("w", before, "x")]}, {"q": [Row("w", now, "x")]})

    def test_aFigureThatIsNotablyWorseIsBold(self):
        self.assertIn("| q: w | 10.0 x | 12.0 x | **+20%** |", self.compare(10, 12))

    def test_whatIsBetterOrNearlyTheSameIsPlain(self):
        self.assertIn("| +10% |", self.compare(10, 11))
        self.assertIn("| -50% |", self.compare(10, 5))

    def test_aFigureThatWasNothingHasNoShare(self):
        self.assertIn("| **from nothing** |", self.compare(0, 5))

    def test_onlyWhatBothHaveIsCompared(self):
        table = report.make_comparison(
            {"q": [Row("w", 1, "x"), Row("gone", 1, "x")], "other": [Row("w", 1, "x")]},
            {"q": [Row("w", 1, "ms"), Row("w", 1, "x"), Row("new", 1, "x")]})
        self.assertEqual(len(table.splitlines()), 3)
        self.assertIn("Nothing to compare", report.make_comparison({}, {"q": [Row("w", 1, "x")]}))


class Document(unittest.TestCase):
    def test_onlyTheTablesOfTheRecordAreWrittenAnew(self):
        with tempfile.TemporaryDirectory() as place:
            document = pathlib.Path(place) / "performance.md"
            document.write_text(DOCUMENT, encoding="utf-8")
            record = history.Record("2001-02-03 04:05", {"processor": "a fast one"},
                                    {"first": [Row("new row", 7, "ms")], "unknown": []})
            questions = {"first": types.SimpleNamespace(TITLE="A title")}
            report.rewrite(document, questions, record)
            report.rewrite(document, questions, record)
            text = document.read_text(encoding="utf-8")
        self.assertEqual(text.count("| new row | 7.00 ms |"), 1)
        self.assertNotIn("an old table", text)
        self.assertIn("another old table", text)
        self.assertIn("A title, 2001-02-03 04:05:", text)
        self.assertEqual(text.count("| processor | a fast one |"), 1)
        for kept in ("Above.", "Between.", "Below."):
            self.assertIn(kept, text)


class History(unittest.TestCase):
    def test_aRecordComesBackAsItWasKept(self):
        record = history.Record("2001-02-03 04:05", {"processor": "a fast one"},
                                {"q": [ratio("wörk", "ours", 60, "bare", 3, "µs", 20, 15),
                                       Row("plain", 4, "ms")]})
        with tempfile.TemporaryDirectory() as place:
            path = history.write(pathlib.Path(place) / "history", record)
            self.assertEqual(path.name, "2001-02-03-0405.json")
            self.assertEqual(history.read(path), record)


if __name__ == "__main__":
    unittest.main()
