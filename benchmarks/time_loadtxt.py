#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Prints the processor time, in seconds, that numpy.loadtxt takes for each reading of a table.
import sys
import time

import numpy

name, readings = sys.argv[1], int(sys.argv[2])
for _ in range(readings):
    start = time.process_time()
    numpy.loadtxt(name)
    print(time.process_time() - start, flush=True)
