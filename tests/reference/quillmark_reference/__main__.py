"""The reference as a program of its own."""

import os
import sys

from . import run

result = run([os.fsencode(argument) for argument in sys.argv[1:]])
sys.stdout.buffer.write(result.stdout)
sys.stdout.buffer.flush()
sys.stderr.buffer.write(result.stderr)
sys.exit(result.status)
