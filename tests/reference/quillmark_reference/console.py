"""What a run prints."""


class Refusal(Exception):
    """The run ends at once: these lines go to standard error, and no footer follows."""

    def __init__(self, *lines):
        super().__init__(*lines)
        self.lines = lines


class Console:
    def __init__(self):
        self.out = bytearray()
        self.err = bytearray()

    def write(self, text):
        self.out += text

    def line(self, text=b""):
        self.out += text + b"\n"

    def error_line(self, text):
        self.err += text + b"\n"
