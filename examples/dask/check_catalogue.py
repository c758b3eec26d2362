#!/usr/bin/python3
"""check_catalogue.py SCHEDULER LIST: checks the documents and packages that a list names, on all workers of a
Dask scheduler, and prints a JSON object a line for each, in the order of the list.

SCHEDULER is its address, such as tcp://scheduler:8786. The files have the same names on every worker, and
nimbrel-config is installed there. A piece of the list whose worker is lost is checked by another one.
"""

import subprocess
import sys

from distributed import Client

PIECE = 500  # names


def check(names):
    """Runs on a worker: the lines that nimbrel-config prints for these names."""
    done = subprocess.run(["nimbrel-config", "check", "--format", "jsonl", "--files-from", "-"],
                          input="\0".join(names).encode() + b"\0", stdout=subprocess.PIPE)
    if done.returncode not in (0, 1, 2):  # 1 and 2: the lines say what is wrong
        raise RuntimeError(f"nimbrel-config ended with {done.returncode}")
    return done.stdout


def main(scheduler, list_of_files):
    with open(list_of_files, encoding="utf-8", errors="surrogateescape") as file:
        names = file.read().splitlines()
    pieces = [names[i:i + PIECE] for i in range(0, len(names), PIECE)]
    with Client(scheduler) as client:
        futures = client.map(check, pieces, pure=False)
        while futures:
            sys.stdout.buffer.write(futures[0].result())
            del futures[0]  # the workers may forget it


if __name__ == "__main__":
    main(*sys.argv[1:])
