// First MACHINE: loads a machine, poses it, and asks where its axes stand.
using System;
using System.Globalization;
using K5ax;

static class First {
  static int Main(string[] args) {
    if (args.Length != 1) {
      Console.Error.WriteLine("usage: first MACHINE");
      return 2;
    }
    CultureInfo.CurrentCulture = CultureInfo.InvariantCulture;  // numbers with a point
    try {
      using (Machine machine = Machine.Load(args[0])) {
        double d2r = Native.k5ax_D2R();
        if (!machine.Pose(new Point(30, 20, 50), new Point(-40 * d2r, 0, 90 * d2r))) return 1;

        double[] xyzabc = machine.ReadCoordinates();
        Console.WriteLine("X {0:F3}  Y {1:F3}  Z {2:F3}", xyzabc[0], xyzabc[1], xyzabc[2]);
        double r2d = Native.k5ax_R2D();
        Console.WriteLine("A {0:F3}  C {1:F3} degrees", xyzabc[3] * r2d, xyzabc[5] * r2d);
        Console.WriteLine("the slide of Z stands at {0:F3}", machine.AxisPosition(3));
      }
    } catch (MachineFileException e) {
      Console.Error.WriteLine("first: " + e.Message);
      return 2;
    }
    return 0;
  }
}
