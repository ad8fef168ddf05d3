"""Answers in files, so that later ones can be held against them."""

import dataclasses
import json

from answers import Raw, Row


@dataclasses.dataclass(frozen=True)
class Record:
    """All the answers of one run. The date is local, "YYYY-MM-DD HH:MM"."""

    date: str
    machine: dict
    #: Lists of rows by the name of the question.
    answers: dict


def write(folder, record):
    """Writes a new file, named for the date of the record, and returns its path."""
    folder.mkdir(parents=True, exist_ok=True)
    name = record.date.replace(" ", "-").replace(":", "")
    path = folder / f"{name}.json"
    path.write_text(json.dumps(dataclasses.asdict(record), indent=1, ensure_ascii=False) + "\n",
                    encoding="utf-8")
    return path


def read(path):
    content = json.loads(path.read_text(encoding="utf-8"))
    answers = {name: [_read_row(row) for row in rows] for name, rows in content["answers"].items()}
    return Record(content["date"], content["machine"], answers)


def _read_row(content):
    raw = tuple(Raw(**figure) for figure in content.pop("raw"))
    return Row(raw=raw, **content)
