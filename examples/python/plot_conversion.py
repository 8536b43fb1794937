"""Plots a conversion by a table of numbers: its rows, and what it makes of the values between them.

    plot_conversion.py DESCRIPTION CONVERSION PICTURE

Editors that know notebooks run it cell by cell.
"""

# %% What is to be plotted
import sys

import numpy
from matplotlib.figure import Figure

import quillmark

path, name, picture = sys.argv[1:4]
module = quillmark.read(path).modules[0]
conversion = module.conversions[name]
table = conversion.table
if table is None or any(row.output is None for row in table.rows):
    sys.exit(f"{name} is no conversion by a table of numbers")
unit = conversion.unit.display_text if conversion.unit is not None else ""

# %% The rows as the description has them, and all raw values from somewhat before the first of them
# to somewhat behind the last
rows = numpy.array([(row.lower, row.output) for row in table.rows], dtype=float)
first, last = rows[:, 0].min(), rows[:, 0].max()
margin = 0.05 * (last - first)
raw = numpy.linspace(first - margin, last + margin, 2001)
physical = conversion(raw)

# %% The picture
figure = Figure(figsize=(8, 5), layout="constrained")
axes = figure.subplots()
axes.plot(raw, physical, label=conversion.name)
axes.plot(rows[:, 0], rows[:, 1], "o", label=f"rows of {table.name}")
if table.default_text is not None:
    axes.axvspan(raw[0], first, color="0.9", label=table.default_text)
    axes.axvspan(last, raw[-1], color="0.9")
axes.margins(x=0)
axes.set_title(conversion.long_identifier or conversion.name)
axes.set_xlabel("raw value")
axes.set_ylabel(f"physical value [{unit}]" if unit else "physical value")
axes.grid(alpha=0.3)
axes.legend()
figure.savefig(picture, dpi=120)
print(f"{picture}: {len(rows)} rows, {rows[:, 1].min():g} to {rows[:, 1].max():g} {unit}".rstrip())
