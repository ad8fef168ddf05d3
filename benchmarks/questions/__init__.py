"""The questions, one module each. README.md beside this folder says what a module needs."""

import importlib
import pathlib


def load_questions():
    """The modules by the names that the command line knows, in the order in which they are asked."""
    here = pathlib.Path(__file__).parent
    modules = [importlib.import_module(f"questions.{file.stem}")
               for file in here.glob("*.py") if file.stem != "__init__"]
    modules.sort(key=lambda module: (module.ORDER, module.__name__))
    return {module.__name__.rpartition(".")[2].replace("_", "-"): module for module in modules}
