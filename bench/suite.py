"""Measures the program on generated descriptions and prints tables; called by scripts/bench.

Nothing is printed before it has been measured, and all commands of one table run in turn, so that
whatever else the machine does falls on all of them alike. The data stay in the current directory.
"""

import argparse
import csv
import os
import statistics
import subprocess
from typing import Dict, Iterator, List, NamedTuple

HEAD = """
### {}

| Command              |   wall ms |   user ms |  sys ms |    MB/s | wall ratio | peak / input |
|----------------------|----------:|----------:|--------:|--------:|-----------:|-------------:|"""
ROW = "| {:<20} | {:9.1f} | {:9.1f} | {:7.1f} | {:7.0f} | {:10.2f} | {:12.2f} |"


class Cost(NamedTuple):
    """What a command took: times in milliseconds, the peak of resident memory in bytes."""

    wall: float
    user: float
    system: float
    peak: float


class Bench:
    def __init__(self, tools: str, rounds: int):
        self.tools = tools
        self.rounds = rounds
        self.ready_mb = 0

    def tool(self, name: str) -> str:
        return os.path.join(self.tools, name)

    def convert(self, description: str, output: str, *options: str) -> List[str]:
        return [self.tool("quillmark"), "convert", description, output, *options]

    def prepare(self, description: str) -> List[str]:
        return [self.tool("quillmark-a2l"), "prepare", "--quiet", "-o", "ready.out", description]

    def step(self, *arguments: str) -> List[str]:
        return [self.tool("quillmark_step"), *arguments]

    def description(self, mix: str, megabytes: str) -> str:
        """The name of that description, which is made if it is not there."""
        name = f"{mix}-{megabytes}.a2l"
        if not os.path.exists(name):
            part = name + ".part"
            subprocess.run([self.tool("quillmark_generate"), "--mix", mix, "--size-mb", megabytes,
                            "--out", part], check=True)
            os.rename(part, name)
            # No command shall share the machine with the disk that still takes it.
            subprocess.run(["sync", name], check=True)
        with open(name, "rb") as file:
            while file.read(1 << 20):  # into the page cache
                pass
        return name

    def measure(self, command: List[str]) -> Cost:
        """Runs a command that has to succeed. A file *.out is the one that it writes, and is not
        there when it begins: emptying a file that is still on its way to the disk takes long, and
        how long is up to the disk."""
        for word in command:
            if word.endswith(".out") and os.path.exists(word):
                os.remove(word)
        told = subprocess.run([self.tool("quillmark_measure"), "--ready", str(self.ready_mb),
                               *command], check=True, capture_output=True, text=True).stdout
        return Cost(*map(float, told.split()[:4]))

    def make_ready_for(self, description: str) -> None:
        """Sets how much memory is made ready before each command that works on this description:
        half as much again as a conversion takes, which is tried, its output included. A virtual
        machine's host takes back what lay free for a while, and getting it again is dear."""
        self.ready_mb = 0
        peak = self.measure(self.convert(description, "plain.out", "-i")).peak
        wanted = int((peak + os.path.getsize("plain.out")) * 1.5 / 1e6)
        self.ready_mb = min(wanted, available_mb() // 4)

    def medians(self, commands: Dict[str, List[str]], rounds: int = 0) -> Dict[str, Cost]:
        costs: Dict[str, List[Cost]] = {label: [] for label in commands}
        for _ in range(rounds or self.rounds):
            for label, command in commands.items():
                costs[label].append(self.measure(command))
        return {label: Cost(*map(statistics.median, zip(*all_of_it)))
                for label, all_of_it in costs.items()}

    def table(self, title: str, size: int, commands: Dict[str, List[str]],
              *bases: str) -> Dict[str, Cost]:
        """Prints a table of these commands; their wall times are set against that of the bases
        together, speeds and peaks against a size in bytes."""
        print(HEAD.format(title), flush=True)
        costs = self.medians(commands)
        base = sum(costs[label].wall for label in bases)
        for label, cost in costs.items():
            print(ROW.format(label, cost.wall, cost.user, cost.system, size / cost.wall / 1000,
                             cost.wall / base, cost.peak / size))
        return costs


    def tables(self, title: str, description: str, size: int, commands: Dict[str, List[str]],
               *bases: str) -> Iterator[Dict[str, Cost]]:
        """The same table twice: with memory made ready for what works on this description, and as
        a user meets the program."""
        self.make_ready_for(description)
        yield self.table(title, size, commands, *bases)
        self.ready_mb = 0
        yield self.table(f"{title}, nothing made ready", size, commands, *bases)


def available_mb() -> int:
    with open("/proc/meminfo", encoding="ascii") as file:
        return next(int(line.split()[1]) // 1024 for line in file
                    if line.startswith("MemAvailable:"))


def processor() -> str:
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        return next((line.split(": ")[1].strip() for line in file
                     if line.startswith("model name")), "unknown processor")


def stages(bench: Bench) -> None:
    print("\n### Stages\n\n| Stage | ms | MB/s |\n|---|---:|---:|", flush=True)
    # The warning about its own build is the packaged library's.
    told = subprocess.run([bench.tool("quillmark_bench"), "--sample-mb=10",
                           "--benchmark_format=csv", "--benchmark_min_time=0.3"], check=True,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout
    table = told[told.index("name,"):].splitlines()
    for row in csv.DictReader(table):
        milliseconds = float(row["real_time"]) / (1000 if row["time_unit"] == "us" else 1)
        speed = row["bytes_per_second"]
        print(f"| {row['name']} | {milliseconds:.3f} | "
              f"{format(float(speed) / 1e6, '.0f') if speed else ''} |")


def whole_program(bench: Bench, megabytes: str) -> None:
    file = bench.description("realistic", megabytes)
    commands = {"wc": ["wc", "-w", file], "cat": ["cat", file],
                "convert": bench.convert(file, "plain.out"),
                "convert-i": bench.convert(file, "indented.out", "-i"),
                "compare": [bench.tool("quillmark"), "compare", file, file]}
    for costs in bench.tables(f"Whole program, realistic mix, {megabytes} MB (ratio to wc -w)",
                              file, os.path.getsize(file), commands, "wc"):
        print_ratios(costs)


def print_ratios(costs: Dict[str, Cost]) -> None:
    wall = {label: cost.wall for label, cost in costs.items()}
    print(f"\nconvert / wc: {wall['convert'] / wall['wc']:.2f}; "
          f"convert -i / wc: {wall['convert-i'] / wall['wc']:.2f}; "
          f"convert -i / convert: {wall['convert-i'] / wall['convert']:.2f}; "
          f"compare / convert: {wall['compare'] / wall['convert']:.2f}")


def compression(bench: Bench, megabytes: str) -> None:
    file = bench.description("realistic", megabytes)
    plain, packed = "plain.cfginclude", "packed.cfginclude"
    for command in (bench.convert(file, plain), bench.convert(file, packed, "-z"),
                    bench.step("deflate-to", plain, "plain.zlib")):
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    list(bench.tables(f"Compression, {megabytes} MB (ratio to convert + deflate)", file,
                      os.path.getsize(file),
                      {"convert": bench.convert(file, "plain.out"),
                       "deflate": bench.step("deflate", plain),
                       "convert-z": bench.convert(file, "packed.out", "-z")},
                      "convert", "deflate"))
    bench.make_ready_for(file)
    costs = bench.table("Decompression, per byte of the text (ratio to inflate + one pass)",
                        os.path.getsize(plain),
                        {"inflate": bench.step("inflate", "plain.zlib"),
                         "inflate-to": bench.step("inflate-to", "plain.zlib", "inflated.out"),
                         "decompress": [bench.tool("quillmark"), "decompress", packed,
                                        "plain.out"]}, "inflate")
    wall = {label: cost.wall for label, cost in costs.items()}
    print("\nspeed of decompress / inflate and a pass in memory: "
          f"{wall['inflate'] / wall['decompress']:.2f}; "
          f"/ inflate and writing: {wall['inflate-to'] / wall['decompress']:.2f}")


def comparison(bench: Bench, megabytes: str) -> None:
    file = bench.description("realistic", megabytes)
    bench.make_ready_for(file)
    subprocess.run(["cp", file, "new.a2l"], check=True)
    bench.table(f"Comparing two descriptions of {megabytes} MB (ratio to reading one)",
                os.path.getsize(file),
                {"read": bench.step("read", file),
                 "compare": [bench.tool("quillmark"), "compare", file, "new.a2l"]}, "read")


TYPES = """
    /begin TYPEDEF_MEASUREMENT Value_U16 "" UWORD NO_COMPU_METHOD 0 0 0 65535
    /end TYPEDEF_MEASUREMENT
    /begin TYPEDEF_STRUCTURE Channel "" 8
      /begin STRUCTURE_COMPONENT raw Value_U16 0 /end STRUCTURE_COMPONENT
      /begin STRUCTURE_COMPONENT filtered Value_U16 2 /end STRUCTURE_COMPONENT
      /begin STRUCTURE_COMPONENT history Value_U16 4 MATRIX_DIM 2 /end STRUCTURE_COMPONENT
    /end TYPEDEF_STRUCTURE
"""


def write_newer(old: str, new: str) -> None:
    """Makes a description of version 1.7: a word that 1.6 lacks in each measurement, and behind
    every fiftieth of them an array of structures."""
    measurements = 0
    with open(old, encoding="ascii") as source, open(new, "w", encoding="ascii") as target:
        for line in source:
            if line == "    /end MEASUREMENT\n":
                measurements += 1
                target.write(f'      MODEL_LINK "model/{measurements}"\n')
                if measurements % 50 == 0:
                    line += (f'    /begin INSTANCE Channel_{measurements} "" Channel '
                             f"0x{0x40000000 + 32 * measurements:X} MATRIX_DIM 4 /end INSTANCE\n")
            target.write(line.replace("ASAP2_VERSION 1 60", "ASAP2_VERSION 1 71"))
            if "/begin MODULE" in line:
                target.write(TYPES)


def preparation(bench: Bench, megabytes: str) -> None:
    file = bench.description("realistic", megabytes)
    bench.make_ready_for(file)
    write_newer(file, "newer.a2l")
    bench.table(f"Preparing descriptions of {megabytes} MB (ratio to convert)",
                os.path.getsize(file),
                {"convert": bench.convert(file, "plain.out"),
                 "prepare": bench.prepare(file),
                 "prepare 1.7": bench.prepare("newer.a2l")}, "convert")


def small_description(bench: Bench) -> None:
    file = bench.description("realistic", "0.09")
    size = os.path.getsize(file)
    list(bench.tables(f"A small description, {size} bytes (ratio to wc -w)", file, size,
                      {"wc": ["wc", "-w", file], "convert": bench.convert(file, "plain.out")},
                      "wc"))


def growth(bench: Bench, mixes: List[str], small: str, large: str) -> None:
    rounds = 2 * bench.rounds + 1  # a quotient of two medians is less steady than one
    print(f"\n### Growth from {small} to {large} MB, every mix, {rounds} rounds, with memory made "
          "ready and as a user meets the program\n\n"
          f"| Mix | {small} MB, ms | {large} MB, ms | time ratio | not ready: {small} MB, ms | "
          f"{large} MB, ms | time ratio | size ratio | peak / input |\n"
          "|---|---:|---:|---:|---:|---:|---:|---:|---:|", flush=True)
    for mix in mixes:
        files = {size: bench.description(mix, size) for size in (large, small)}
        commands = {size: bench.convert(file, "plain.out") for size, file in files.items()}
        bench.make_ready_for(files[large])
        ready = bench.medians(commands, rounds)
        bench.ready_mb = 0
        costs = bench.medians(commands, rounds)
        sizes = {size: os.path.getsize(file) for size, file in files.items()}
        times = "".join(f"{cost[small].wall:.0f} | {cost[large].wall:.0f} | "
                        f"{cost[large].wall / cost[small].wall:.2f} | " for cost in (ready, costs))
        print(f"| {mix} | {times}{sizes[large] / sizes[small]:.2f} | "
              f"{costs[large].peak / sizes[large]:.2f} |", flush=True)
        if mix != "realistic":
            for file in files.values():  # nine mixes of this size would fill a disk
                os.remove(file)


def instructions(bench: Bench) -> None:
    """How many instructions some commands take, which no other work of the machine changes."""
    file = bench.description("realistic", "10")
    write_newer(file, "newer.a2l")
    print("\n### Instructions, realistic mix, 10 MB\n\n| Command | millions |\n|---|---:|")
    for label, command in {"convert": bench.convert(file, "plain.out"),
                           "convert-i": bench.convert(file, "plain.out", "-i"),
                           "compare": [bench.tool("quillmark"), "compare", file, file],
                           "prepare": bench.prepare(file),
                           "prepare 1.7": bench.prepare("newer.a2l")}.items():
        told = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                               *command], check=True, capture_output=True, text=True).stderr
        count = next(line.split()[-1] for line in told.splitlines() if "Collected" in line)
        print(f"| {label} | {int(count) / 1e6:.1f} |", flush=True)


def main() -> None:
    parser = argparse.ArgumentParser(prog="scripts/bench", description="Measures the program.")
    parser.add_argument("--tools", required=True, help=argparse.SUPPRESS)
    parser.add_argument("-r", dest="rounds", type=int, default=5,
                        help="how often each command runs, in turn with the others (5; for the "
                        "growth 11 times then); medians are printed")
    parser.add_argument("-m", dest="mixes", help="the mixes whose growth is taken, with commas")
    parser.add_argument("-s", dest="growth_sizes", default="100,300",
                        help="the two sizes in MB between which it is taken (100,300)")
    parser.add_argument("sizes", nargs="*", default=["10", "100", "300"],
                        help="sizes in MB at which the program runs beside wc and cat (10 100 300)")
    arguments = parser.parse_intermixed_args()

    bench = Bench(arguments.tools, arguments.rounds)
    mixes = arguments.mixes or subprocess.run([bench.tool("quillmark_generate"), "--mixes"],
                                              check=True, capture_output=True, text=True).stdout
    sizes = arguments.sizes
    print(f"Machine: {os.cpu_count()} processors, {processor()}; load {os.getloadavg()[0]:.2f}; "
          f"median of {bench.rounds} rounds in turn.")
    stages(bench)
    instructions(bench)
    for size in sizes:
        whole_program(bench, size)
    compression(bench, sizes[-1])
    comparison(bench, sizes[max(len(sizes) - 2, 0)])
    preparation(bench, sizes[max(len(sizes) - 2, 0)])
    small_description(bench)
    growth(bench, mixes.replace(",", " ").split(), *arguments.growth_sizes.split(","))
    for name in os.listdir("."):
        if name.endswith((".out", ".cfginclude")) or name in ("plain.zlib", "new.a2l", "newer.a2l"):
            os.remove(name)


if __name__ == "__main__":
    main()
