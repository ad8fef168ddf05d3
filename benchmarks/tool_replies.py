"""How long the replies of the benchmarks' own tool are, in bytes, end mark and all."""

_MARK = "COMMAND SUCCEEDED\n"

#: The reply to a command that the tool does not know by name.
PLAIN_BYTES = len("OK\n" + _MARK)


def count_large(size):
    """The reply to "large SIZE"."""
    return size + len(_MARK)
