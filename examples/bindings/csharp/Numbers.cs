// Numbers as text: six decimals and a point, a space before each.
using System;
using System.Globalization;
using System.Linq;

static class Numbers {
  // A number that six decimals show as zero has no sign; newer runtimes would print it.
  public static string Text(params double[] values) {
    return string.Concat(values.Select(
        v => " " + (Math.Abs(v) < 0.5e-6 ? 0 : v).ToString("F6", CultureInfo.InvariantCulture)));
  }

  public static string Text(K5ax.Point p) {
    return Text(p.X, p.Y, p.Z);
  }
}
