"""Takes a tool path through a machine: tool_path.py MACHINE PATH

PATH is a CSV file: the line x,y,z,a,b,c, then part coordinates and degrees.
"""

import sys

import numpy as np

import k5ax


def main(machine_file: str, path_file: str) -> int:
    machine = k5ax.Machine.load(machine_file)

    # [snippet convert]
    path = np.loadtxt(path_file, delimiter=",", skiprows=1)
    p_part = path[:, :3]  # in the machine's unit
    abc = np.radians(path[:, 3:])

    p_mach = machine.part_to_machine(p_part, abc)
    p_back, tool_dir_part = machine.machine_to_part(p_mach, abc)
    # [end]
    worst = np.abs(p_back - p_part).max()
    print(f"{len(path)} positions, {worst:.0e} off after the way there and back")
    print("tool direction of the first one on the part: {:.4f} {:.4f} {:.4f}".format(*tool_dir_part[0]))

    # [snippet travel]
    values, reached = machine.axis_values(p_mach, abc)
    for node, positions in zip(machine.axis_nodes, values.T):
        axis = node.axis
        is_out = (positions < axis.min) | (positions > axis.max)
        travel = f"{positions.min():9.3f} to {positions.max():9.3f}"
        print(f"{axis.type.name}: {travel}, {is_out.sum()} out of travel")
    # [end]

    # [snippet read_back]
    xyz, angles = machine.read_back(values)
    # [end]
    print(f"{np.count_nonzero(reached)} reached; read back {np.abs(xyz - p_mach).max():.0e} off")

    # [snippet wrap]
    p_wrapped, angles, radius = machine.cartesian_to_axial_rotary(p_mach, abc, ref_axis=0)
    # [end]
    print(f"wrapped, the path is up to {np.max(radius):.3f} away from the rotary axis")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
