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


def make_comparison(former, answers, asked):
    """What the former record is, and the figures that both have for the questions that were asked.

    A notable change to the worse is bold. What only one of them has is listed below.
    """
    before = _collect(former.answers, asked)
    now = _collect(answers, asked)
    lines = ["| | before | now | change |", "| --- | ---: | ---: | ---: |"]
    for row, figure in now.items():
        if row in before:
            unit = row[1]
            cells = (row[0], format_figure(before[row], unit), format_figure(figure, unit),
                     _format_change(before[row], figure))
            lines.append("| " + " | ".join(cells) + " |")
    parts = [_introduce(former),
             "\n".join(lines) if len(lines) > 2 else "Nothing to compare: no figure is in both.",
             _list_rows("Only before", before.keys() - now.keys(), before),
             _list_rows("Only now", now.keys() - before.keys(), now)]
    return "\n\n".join(part for part in parts if part)


def _introduce(former):
    kept = former.machine
    return "Before: " + ", ".join(filter(None, (
        former.date, f"commit {kept.get('commit', 'unknown')}",
        kept.get("processor", "an unknown processor"), former.note))) + "."


def _collect(answers, asked):
    """The figures of the questions by name and unit of their rows, in their order."""
    return {(f"{name}: {row.what}", row.unit): row.figure
            for name in asked for row in answers.get(name, ())}


def _list_rows(heading, rows, figures):
    listed = [f"- {row[0]}, {format_figure(figures[row], row[1])}" for row in figures if row in rows]
    return "\n".join([f"{heading}:", *listed]) if listed else ""


def _format_change(before, now):
    if before == 0:
        return "" if now == 0 else "**from nothing**"
    change = now / before - 1
    text = f"{change:+.0%}"
    return f"**{text}**" if change > NOTABLE_CHANGE else text


def rewrite(document, questions, record, is_complete):
    """Puts the tables of the record between their markers in the document.

    What stands between "<!-- bench NAME -->" and "<!-- end -->" is replaced, all else is left. A
    question without markers is not in the document. The description of the machine is written only
    with a complete record, since the tables that are left are of the one that it describes.
    """
    text = document.read_text(encoding="utf-8")
    if is_complete:
        text = replace_between(text, "machine", _describe(record))
    for name, rows in record.answers.items():
        caption = make_caption(questions[name].TITLE, name, record, is_complete)
        text = replace_between(text, name, f"{caption}\n\n{make_table(rows)}")
    document.write_text(text, encoding="utf-8")


def make_caption(title, name, record, is_complete):
    """What stands above a table: of what it is, when it was taken, on what, and how."""
    parts = [title, record.date, f"commit {record.machine.get('commit', 'unknown')}"]
    if not is_complete:
        parts.append(record.machine.get("processor", "an unknown processor"))
    taken = record.circumstances.get(name)
    if taken is not None:
        parts += [f"load {taken.load:.1f}", *_name_rounds(taken.rounds)]
    return ", ".join(parts) + ":"


def _name_rounds(rounds):
    if not rounds:
        return []
    return [" and ".join(map(str, rounds)) + (" round" if rounds == [1] else " rounds")]


def replace_between(text, name, content):
    pattern = re.compile(rf"(<!-- bench {re.escape(name)} -->\n).*?(<!-- end -->)", re.DOTALL)
    return pattern.sub(lambda match: f"{match[1]}{content}\n{match[2]}", text)


def _describe(record):
    lines = ["| | |", "| --- | --- |", f"| date | {record.date} |"]
    lines += [f"| {name} | {value} |" for name, value in record.machine.items()]
    return "\n".join(lines)
