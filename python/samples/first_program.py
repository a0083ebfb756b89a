"""Asks where a machine has to go for one position on the part."""

import sys

# [snippet first_program]
import numpy as np

import k5ax

machine = k5ax.Machine.load(sys.argv[1])
if not machine.is_valid():
    sys.exit(f"{sys.argv[1]}: not a machine to work with")

p_part = (30, 20, 50)  # in the machine's unit
abc = np.radians((-40, 0, 90))  # A, B, C in radians
p_mach = machine.part_to_machine(p_part, abc)

print("X {:.3f}  Y {:.3f}  Z {:.3f}".format(*p_mach))
# [end]
