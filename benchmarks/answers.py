"""What a question answers: rows of a table, each with one figure and what it was made of."""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Raw:
    """A median as it was measured."""

    name: str
    median: float
    unit: str


@dataclasses.dataclass(frozen=True)
class Row:
    """One line of a table. The smaller a figure is, the better."""

    what: str
    figure: float
    #: "x" for a ratio of two things that were measured in turn, or the unit of the figure.
    unit: str
    raw: tuple = ()
    #: What the figure must not exceed; None for a row that is there to be read only.
    limit: float = None
    #: What it should not exceed.
    better: float = None

    def verdict(self):
        if self.limit is None:
            return ""
        if self.figure > self.limit:
            return "**missed**"
        return "reached" if self.better is None or self.figure > self.better else "better"


def to_megabytes(kilobytes):
    """From what the system calls kilobytes, 1,024 bytes each, to millions of bytes."""
    return kilobytes * 1024 / 1_000_000


def ratio(what, name, value, other_name, other_value, unit, limit=None, better=None):
    """A row whose figure is the ratio of two medians of one unit."""
    raw = (Raw(name, value, unit), Raw(other_name, other_value, unit))
    return Row(what, value / other_value, "x", raw, limit, better)
