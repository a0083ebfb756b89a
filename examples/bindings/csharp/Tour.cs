// Tour MACHINE TOOLPATH: loads a machine, validates it, carries a tool path from the part to the machine,
// poses the machine for every row, and shows both trees as the last row leaves them.
//
// The same program stands in ../c and ../pascal, and all three print the same. Exit status: 0 when all is
// well; 1 when a position cannot be reached; 2 when an input cannot be used, with one line that says why.
using System;
using System.Collections.Generic;
using System.Globalization;
using System.IO;
using System.Linq;
using K5ax;

static class Tour {
  const string Header = "x,y,z,a,b,c";
  const int LongestLine = 255;  // the program in C has no room for more
  const double Tolerance = 1e-9;  // of what is read back, relative to the largest coordinate

  static readonly double[] Identity = { 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0 };

  struct Row {
    public int Line;
    public Point Part;
    public Point Abc;  // radians
  }

  sealed class InputException : Exception {
    public InputException(string message) : base(message) {}
  }

  // ---- the tool path ----

  static List<Row> ReadToolpath(string file) {
    StreamReader reader;
    try {
      reader = new StreamReader(file);
    } catch (Exception e) when (e is IOException || e is UnauthorizedAccessException) {
      throw new InputException(file + ": cannot be opened; give a tool path that is there");
    }
    using (reader) return ReadRows(reader, file);
  }

  static List<Row> ReadRows(StreamReader reader, string file) {
    if (reader.ReadLine() != Header)
      throw new InputException(file + ":1: not the header; begin with the line " + Header);

    var rows = new List<Row>();
    string text;
    for (int line = 2; (text = reader.ReadLine()) != null; ++line) {
      double[] values = ReadNumbers(text);
      if (values == null) throw new InputException(file + ":" + line + ": not six numbers; write " + Header);
      double d2r = Native.k5ax_D2R();
      rows.Add(new Row { Line = line, Part = new Point(values[0], values[1], values[2]),
                         Abc = new Point(values[3] * d2r, values[4] * d2r, values[5] * d2r) });
    }
    if (rows.Count == 0) throw new InputException(file + ":2: no positions; write a row below the header");
    return rows;
  }

  // Six numbers, or null. The decimal sign is a point, whatever the system's language.
  static double[] ReadNumbers(string text) {
    const NumberStyles style =
        NumberStyles.AllowLeadingSign | NumberStyles.AllowDecimalPoint | NumberStyles.AllowExponent;
    string[] fields = text.Split(',');
    var values = new double[fields.Length];
    for (int i = 0; i < fields.Length; ++i)
      if (!double.TryParse(fields[i], style, CultureInfo.InvariantCulture, out values[i]) ||
          double.IsNaN(values[i]) || double.IsInfinity(values[i]))
        return null;
    return values.Length == 6 && text.Length < LongestLine ? values : null;
  }

  // ---- the machine ----

  // [snippet heard]
  // The library says why a machine is not valid only to a developer, and not for every reason.
  static void Validate(Machine machine, string file) {
    string heard = "k5ax check says why";
    Diagnostics.IsDeveloper = true;
    Diagnostics.OnFeedback(text => heard = text);
    bool valid = machine.IsValid();
    Diagnostics.OnFeedback(null);
    Diagnostics.IsDeveloper = false;
    if (!valid) throw new InputException(file + ": not a valid machine: " + heard);
  }
  // [end]

  static Machine Load(string file) {
    Machine machine;
    try {
      machine = Machine.Load(file);
    } catch (MachineFileException e) {
      throw new InputException(e.Message + "; k5ax check says which");
    }
    Validate(machine, file);
    if (machine.Tree(0) == null || machine.Tree(1) == null)
      throw new InputException(file + ": no scene graph; save the machine with both trees");
    return machine;
  }

  // ---- text ----

  static string Letter(AxisRecord axis) {
    return axis.Type >= AxisType.A && axis.Type <= AxisType.Z ? axis.Type.ToString() : "?";
  }

  static void PrintAxis(string role, AxisRecord? optional) {
    if (optional == null) return;
    AxisRecord axis = optional.Value;
    double r2d = Native.k5ax_R2D();
    Console.WriteLine("{0} {1} {2} through{3} along{4} travel{5}", role, Letter(axis),
                      axis.Location == AxisLocation.Table ? "table" : "head", Numbers.Text(axis.Base),
                      Numbers.Text(axis.Vector), Numbers.Text(axis.Min * r2d, axis.Max * r2d));
  }

  static void PrintMachine(Machine machine) {
    string[] types = { "table-table", "head-table", "head-head" };
    Console.WriteLine("{0}, {1} axes, {2} head", types[(int)machine.Type],
                      machine.IsOrthogonal ? "orthogonal" : "skew",
                      machine.HasAngledHead ? "angled" : "straight");
    PrintAxis("primary", machine.Primary);
    PrintAxis("secondary", machine.Secondary);
  }

  // ---- the trees ----

  // A before B, as the points see it: both have three rows for directions and one for the origin.
  static double[] Multiply(double[] a, double[] b) {
    var product = new double[12];
    for (int row = 0; row < 4; ++row)
      for (int column = 0; column < 3; ++column) {
        double sum = row == 3 ? b[9 + column] : 0;
        for (int i = 0; i < 3; ++i) sum += a[3 * row + i] * b[3 * i + column];
        product[3 * row + column] = sum;
      }
    return product;
  }

  static void PrintNode(Machine machine, Node node, double[] parentToRoot) {
    string what = node.Kind() == NodeKind.Tool ? " tool" : " plain";
    AxisRecord? axis = node.Axis();
    if (axis != null) {
      double unit = axis.Value.Mode == AxisMode.Rotary ? Native.k5ax_R2D() : 1;
      what = " axis " + Letter(axis.Value) + " at" + Numbers.Text(machine.AxisPosition(node.Id) * unit);
    }
    double[] nodeToRoot = Multiply(node.Matrix(), parentToRoot);
    IList<Node> children = node.Children;
    Console.WriteLine("node {0}{1}, {2} below:{3}", node.Id, what, children.Count, Numbers.Text(nodeToRoot));
    foreach (Node child in children) PrintNode(machine, child, nodeToRoot);
  }

  static void PrintTrees(Machine machine) {
    for (int tree = 0; tree < 2; ++tree) {
      Console.WriteLine("tree {0}", tree);
      PrintNode(machine, machine.Tree(tree), Identity);
    }
  }

  static void CollectRotaryAxes(Node node, List<Node> rotaryAxes) {
    AxisRecord? axis = node.Axis();
    if (axis != null && axis.Value.Mode == AxisMode.Rotary) rotaryAxes.Add(node);
    foreach (Node child in node.Children) CollectRotaryAxes(child, rotaryAxes);
  }

  // ---- the path ----

  static bool IsReadBack(Machine machine, Point xyz, Point abc) {
    double[] wanted = { xyz.X, xyz.Y, xyz.Z, abc.X, abc.Y, abc.Z };
    double scale = Math.Max(1, wanted.Take(3).Max(v => Math.Abs(v)));
    return machine.ReadCoordinates().Zip(wanted, (a, b) => Math.Abs(a - b)).All(d => d <= Tolerance * scale);
  }

  // The update measures the tool point before it turns the table, so the table's rotary axes, which are in
  // tree 1, are brought to their zero pose first.
  static int RunPath(Machine machine, List<Row> rows) {
    var tableAxes = new List<Node>();
    CollectRotaryAxes(machine.Tree(1), tableAxes);

    int reached = 0;
    int readBack = 0;
    foreach (Row row in rows) {
      Point xyz = machine.PartToMachine(row.Part, row.Abc);
      foreach (Node axis in tableAxes) axis.MoveTo(0);
      if (machine.Pose(xyz, row.Abc)) ++reached;
      if (IsReadBack(machine, xyz, row.Abc)) ++readBack;
      Console.WriteLine("row {0}:{1}", row.Line, Numbers.Text(xyz));
    }
    Console.WriteLine("{0} rows, {1} reached, {2} read back", rows.Count, reached, readBack);
    return reached == rows.Count && readBack == rows.Count ? 0 : 1;
  }

  static int Run(string machineFile, string pathFile) {
    using (Machine machine = Load(machineFile)) {
      List<Row> rows = ReadToolpath(pathFile);
      PrintMachine(machine);
      int status = RunPath(machine, rows);
      PrintTrees(machine);
      return status;
    }
  }

  static int Main(string[] args) {
    if (args.Length != 2) {
      Console.Error.WriteLine("usage: tour MACHINE TOOLPATH");
      return 2;
    }
    try {
      return Run(args[0], args[1]);
    } catch (InputException e) {
      Console.Error.WriteLine("tour: " + e.Message);
      return 2;
    }
  }
}
