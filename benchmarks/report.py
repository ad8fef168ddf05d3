"""Tables: of answers, of answers against former ones, and those within docs/performance.md."""

import re

#: A figure that is worse by more than this share is pointed out: rounds differ by about that much.
NOTABLE_CHANGE = 0.15


def format_number(value):
    """Three digits that count, never an exponent."""
    if value == 0:
        return "0"
    size = abs(value)
    decimals = 0 if size >= 100 else 1 if size >= 10 else 2 if size >= 1 else 3
    return f"{value:,.{decimals}f}"


def format_figure(value, unit):
    return "" if value is None else f"{format_number(value)} {unit}"


def _format_bound(value, unit):
    return "" if value is None else f"{value:,g} {unit}"


def make_table(rows):
    lines = [
        "| | figure | at most | better | | medians |",
        "| --- | ---: | ---: | ---: | --- | --- |",
    ]
    for row in rows:
        raw = "; ".join(f"{one.name} {format_figure(one.median, one.unit)}" for one in row.raw)
        cells = (row.what, format_figure(row.figure, row.unit), _format_bound(row.limit, row.unit),
                 _format_bound(row.better, row.unit), row.verdict(), raw)
        lines.append("| " + " | ".join(cells) + " |")
    return "\n".join(lines)


def make_comparison(former, answers):
    """A table of the figures that both have, with the change; a notable one to the worse is bold."""
    lines = ["| | before | now | change |", "| --- | ---: | ---: | ---: |"]
    for name, rows in answers.items():
        known = {(row.what, row.unit): row.figure for row in former.get(name, ())}
        for row in rows:
            before = known.get((row.what, row.unit))
            if before is None:
                continue
            cells = (f"{name}: {row.what}", format_figure(before, row.unit),
                     format_figure(row.figure, row.unit), _format_change(before, row.figure))
            lines.append("| " + " | ".join(cells) + " |")
    return "\n".join(lines) if len(lines) > 2 else "Nothing to compare: no figure is in both."


def _format_change(before, now):
    if before == 0:
        return "" if now == 0 else "**from nothing**"
    change = now / before - 1
    text = f"{change:+.0%}"
    return f"**{text}**" if change > NOTABLE_CHANGE else text


def rewrite(document, questions, record):
    """Puts the tables of the record between their markers in the document.

    What stands between "<!-- bench NAME -->" and "<!-- end -->" is replaced, all else is left. A
    question without markers is not in the document.
    """
    text = document.read_text(encoding="utf-8")
    text = replace_between(text, "machine", _describe(record))
    for name, rows in record.answers.items():
        caption = f"{questions[name].TITLE}, {record.date}:" if name in questions else record.date
        text = replace_between(text, name, f"{caption}\n\n{make_table(rows)}")
    document.write_text(text, encoding="utf-8")


def replace_between(text, name, content):
    pattern = re.compile(rf"(<!-- bench {re.escape(name)} -->\n).*?(<!-- end -->)", re.DOTALL)
    return pattern.sub(lambda match: f"{match[1]}{content}\n{match[2]}", text)


def _describe(record):
    lines = ["| | |", "| --- | --- |", f"| date | {record.date} |"]
    lines += [f"| {name} | {value} |" for name, value in record.machine.items()]
    return "\n".join(lines)
