"""The include document as a tree of elements, and how it is written."""

LINE_BREAK = b"\r\n"
INDENTATION = b"    "


class Element:
    """One element: comments before it, then values, children and raw texts inside it."""

    def __init__(self, name):
        self.name = name
        self.comments = []
        self.values = []
        self.children = []
        self.texts = []

    def add_value(self, key, text):
        self.values.append((key, text))

    def add_quoted_value(self, key, text):
        self.add_value(key, b"'" + text + b"'")

    def add_int(self, key, value):
        self.add_value(key, b"%d" % value)

    def add_hex(self, key, value):
        """The low 32 bits of a value."""
        self.add_value(key, b"0x%x" % (value & 0xFFFFFFFF))

    def add_real(self, key, value):
        """Six significant digits; a negative zero is a zero."""
        self.add_value(key, b"%g" % (float(value) or 0.0))

    def add_child(self, name):
        self.children.append(Element(name))
        return self.children[-1]

    def write(self, indent=False, depth=0):
        """The element as bytes. Nothing is escaped, and raw texts are never indented."""
        outer = INDENTATION * depth if indent else b""
        inner = INDENTATION * (depth + 1) if indent else b""
        lines = [outer + b"#" + comment for comment in self.comments]
        lines.append(outer + b"<" + self.name + b">")
        lines += [inner + key + b"=" + text for key, text in self.values]
        content = b"".join(line + LINE_BREAK for line in lines)
        content += b"".join(child.write(indent, depth + 1) for child in self.children)
        content += b"".join(text + LINE_BREAK for text in self.texts)
        return content + outer + b"</" + self.name + b">" + LINE_BREAK
