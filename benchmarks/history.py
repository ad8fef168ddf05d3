"""Answers in files, so that later ones can be held against them."""

import dataclasses
import json

from answers import Raw, Row


class UnreadableRecord(Exception):
    """A file that is no record, in a sentence."""


@dataclasses.dataclass(frozen=True)
class Circumstances:
    """How a question was asked."""

    #: How often its contestants took turns: several numbers when it has several contests.
    rounds: list
    #: The system's load of the minute before it was asked.
    load: float


@dataclasses.dataclass(frozen=True)
class Record:
    """All the answers of one run. The date is local, "YYYY-MM-DD HH:MM"."""

    date: str
    machine: dict
    #: Lists of rows by the name of the question.
    answers: dict
    #: Circumstances by the name of the question. Records from before they were kept have none.
    circumstances: dict = dataclasses.field(default_factory=dict)
    #: What a reader has to know besides.
    note: str = ""


def write(folder, record):
    """Writes a new file, named for the date of the record, and returns its path.

    Another one of the same minute is left: the new one is numbered.
    """
    folder.mkdir(parents=True, exist_ok=True)
    name = record.date.replace(" ", "-").replace(":", "")
    text = json.dumps(dataclasses.asdict(record), indent=1, ensure_ascii=False) + "\n"
    path = folder / f"{name}.json"
    number = 1
    while True:
        try:
            with path.open("x", encoding="utf-8") as file:
                file.write(text)
            return path
        except FileExistsError:
            number += 1
            path = folder / f"{name}-{number}.json"


def read(path):
    """The record of a file. Fields that later versions may add are passed over.

    Raises UnreadableRecord for a file that is none.
    """
    try:
        content = json.loads(path.read_text(encoding="utf-8"))
        return Record(
            content["date"], dict(content["machine"]),
            {name: [_read_row(row) for row in rows] for name, rows in content["answers"].items()},
            {name: _read(Circumstances, one)
             for name, one in content.get("circumstances", {}).items()},
            content.get("note", ""))
    except OSError as failure:
        raise UnreadableRecord(f"{path} cannot be read: {failure.strerror}.") from failure
    except (AttributeError, KeyError, TypeError, ValueError) as failure:
        raise UnreadableRecord(f"{path} is no record of ./bench.") from failure


def _read_row(content):
    row = _read(Row, content)
    if not isinstance(row.figure, (int, float)):
        raise ValueError(row.figure)
    return dataclasses.replace(row, raw=tuple(_read(Raw, figure) for figure in row.raw))


def _read(kind, content):
    known = {field.name for field in dataclasses.fields(kind)}
    return kind(**{name: value for name, value in content.items() if name in known})
