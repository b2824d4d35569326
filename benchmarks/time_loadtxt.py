#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Prints the processor time, in seconds, that numpy.loadtxt takes for each reading of a table, or of
# all tables in a folder. Between two readings of a folder it waits for a line of input.
import os
import sys
import time

import numpy

name, readings = sys.argv[1], int(sys.argv[2])
is_folder = os.path.isdir(name)
names = [os.path.join(name, entry) for entry in sorted(os.listdir(name))] if is_folder else [name]
for _ in range(readings):
    start = time.process_time()
    for table in names:
        numpy.loadtxt(table)
    print(time.process_time() - start, flush=True)
    if is_folder:
        sys.stdin.readline()
