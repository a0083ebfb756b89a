// Face MACHINE FOLDER: calls every function of the binding, and prints what comes out; see face.c.
using System;
using System.Linq;
using System.Runtime.InteropServices;
using System.Text;
using K5ax;

static class Face {
  // ---- text ----

  static void Line(string function, params double[] values) {
    Console.WriteLine("{0}:{1}", function, Numbers.Text(values));
  }

  static void Print(string function, AngledHead head) {
    Console.WriteLine("{0}:{1}{2}{3}{4}{5} {6}", function,
                      Numbers.Text(head.BAngle, head.CAngle, head.Length1, head.Length2),
                      Numbers.Text(head.Tip), Numbers.Text(head.ToolDir), Numbers.Text(head.RefDir),
                      Numbers.Text(head.Offset), head.Flags);
  }

  static void Print(string function, AxisRecord axis) {
    Console.WriteLine("{0}:{1}{2} {3} {4}{5} {6}", function, Numbers.Text(axis.Base),
                      Numbers.Text(axis.Vector), (int)axis.Type, (int)axis.Location,
                      Numbers.Text(axis.Min, axis.Max), (int)axis.Mode);
  }

  static void Print(string function, IntPtr axis) {
    Print(function, Read<AxisRecord>(axis));
  }

  static T Read<T>(IntPtr record) {
    return (T)Marshal.PtrToStructure(record, typeof(T));
  }

  static string There(IntPtr pointer) {
    return pointer != IntPtr.Zero ? "there" : "null";
  }

  static int Bit(bool answer) {
    return answer ? 1 : 0;
  }

  // ---- layout ----

  static void Record<T>(string name, params string[] fields) {
    Console.WriteLine("{0} {1}: {2}", name, Marshal.SizeOf(typeof(T)),
                      string.Join(" ", fields.Select(f => Marshal.OffsetOf(typeof(T), f).ToString())));
  }

  static void Enumeration<T>(string name) {
    int[] values = Enum.GetValues(typeof(T)).Cast<int>().OrderBy(v => v).ToArray();
    int size = Marshal.SizeOf(Enum.GetUnderlyingType(typeof(T)));
    Console.WriteLine("{0} {1}: {2}", name, size, string.Join(" ", values));
  }

  static void Layout() {
    Record<Point>("k5ax_point", "X", "Y", "Z");
    Record<AxisRecord>("TAxis", "Base", "Vector", "Type", "Location", "Min", "Max", "Mode");
    Record<AngledHead>("angled_head", "BAngle", "CAngle", "Length1", "Length2", "Tip", "ToolDir", "RefDir",
                       "Offset", "Flags");
    Record<NodeState>("node_state", "Id", "Flags", "Value");
    Enumeration<AxisType>("AXIS_TYPE");
    Enumeration<AxisMode>("AXIS_MODE");
    Enumeration<AxisLocation>("AXIS_LOCATION");
    Enumeration<MachineType>("MACHINE_TYPE");
  }

  // ---- the functions ----

  static void Process() {
    uint before = Native.md_flags_get();
    Native.md_flags_set(0xfffffff5);
    Console.WriteLine("md_flags_get: {0} {1}", before, Native.md_flags_get());
    int with = Native.md_regression();
    Native.md_flags_set(2);
    Console.WriteLine("md_regression: {0} {1}", with, Native.md_regression());
    Native.md_flags_set(0);
    Console.WriteLine("md_flags_set: {0}", Native.md_flags_get());
    Line("k5ax_R2D", Native.k5ax_R2D());
    Line("k5ax_D2R", Native.k5ax_D2R());
    Line("k5ax_normalise_angle", Native.k5ax_normalise_angle(-1, 1), Native.k5ax_normalise_angle(4, 2));
  }

  static void Head() {
    AngledHead one;
    Native.k5ax_angled_head_initialise(out one);
    Print("k5ax_angled_head_initialise", one);
    int straight = Native.k5ax_is_angled_head(ref one);

    Native.k5ax_angled_head_set(90, 30, new double[] { 4, 2 }, 1, ref one);
    Print("k5ax_angled_head_set", one);
    Native.k5ax_angled_head_flags_set(ref one, 0x80000003);
    Console.WriteLine("k5ax_angled_head_flags_set: {0}", one.Flags);
    Console.WriteLine("k5ax_angled_head_flags_get: {0}", Native.k5ax_angled_head_flags_get(ref one));
    Console.WriteLine("k5ax_is_angled_head: {0} {1} {2}", straight, Native.k5ax_is_angled_head(ref one),
                      Native.k5ax_is_angled_head(IntPtr.Zero));

    AngledHead other;
    Native.k5ax_angled_head_copy(out other, ref one);
    Print("k5ax_angled_head_copy", other);
    other.Offset = new Point(1, 2, 3);
    Native.k5ax_angled_head_scale(ref other, 2);
    Print("k5ax_angled_head_scale", other);
  }

  static void Axis() {
    var axis = new AxisRecord {
      Base = new Point(1, 2, 3), Vector = new Point(0, 1, 0), Type = AxisType.B,
      Location = AxisLocation.Table, Min = -2, Max = 3, Mode = AxisMode.Linear
    };
    IntPtr clone = Native.axis_clone(ref axis);
    Console.WriteLine("axis_location: {0}", (int)Native.axis_location(ref axis));
    var limits = new double[2];
    Marshal.Copy(Native.axis_limits(clone), limits, 0, 2);
    Line("axis_limits", limits);
    Line("axis_get_value", Native.axis_get_value(ref axis, 7, 8, 9));
    double x = 0, y = 0, z = 0;
    int set = Native.axis_set_value(ref axis, 5, ref x, ref y, ref z);
    Console.WriteLine("axis_set_value: {0}{1}", set, Numbers.Text(x, y, z));

    Print("axis_clone", clone);
    AxisRecord source = Read<AxisRecord>(clone);
    var other = new AxisRecord();
    Console.WriteLine("axis_copy: {0}", Native.axis_copy(ref other, ref source));
    Print("axis_copy", other);
    int freed = Native.axis_free(ref clone);
    Console.WriteLine("axis_free: {0} {1}", freed, There(clone));

    var six = new double[] { 1, 2, 3, 4, 5, 6 };
    GCHandle pinned = GCHandle.Alloc(six, GCHandleType.Pinned);
    try {
      IntPtr b = Pick(AxisType.B, six);
      IntPtr third = Pick(AxisType.Z, six);
      Console.WriteLine("AXIS_TYPE_val_get:{0}{1} {2}", Numbers.Text(Read<double>(b)),
                        Numbers.Text(Read<double>(third)), There(Pick(AxisType.Dummy, six)));
    } finally {
      pinned.Free();
    }
  }

  static IntPtr Pick(AxisType type, double[] six) {
    IntPtr[] p = Enumerable.Range(0, 6).Select(i => Marshal.UnsafeAddrOfPinnedArrayElement(six, i)).ToArray();
    return Native.AXIS_TYPE_val_get(type, p[0], p[1], p[2], p[3], p[4], p[5]);
  }

  static MachineHandle Made(string file) {
    MachineHandle machine = Native.k5axCMachDef_create();
    Console.WriteLine("k5axCMachDef_create: {0}", (int)Native.k5axCMachDef_type(machine));
    int missing = Native.MachdefLoad(machine, "nowhere.k5m");
    Console.WriteLine("MachdefLoad: {0} {1}", missing, Native.MachdefLoad(machine, file));
    Console.WriteLine("k5axCMachDef_type: {0}", (int)Native.k5axCMachDef_type(machine));
    Console.WriteLine("k5axCMachDef_mode: {0}", Native.k5axCMachDef_mode(machine));
    Console.WriteLine("k5axCMachDef_discipline: {0}", Native.k5axCMachDef_discipline(machine));
    Console.WriteLine("k5axCMachDef_flags_get: {0}", Native.k5axCMachDef_flags_get(machine));
    Native.k5axCMachDef_flags_set(machine, 0x80000004);
    Console.WriteLine("k5axCMachDef_flags_set: {0}", Native.k5axCMachDef_flags_get(machine));
    Native.k5axCMachDef_flags_set(machine, 0);
    return machine;
  }

  static void Parts(MachineHandle machine) {
    IntPtr head = Native.k5axCMachDef_head(machine);
    AngledHead changed = Read<AngledHead>(head);
    changed.Length1 = 7;
    Marshal.StructureToPtr(changed, head, false);
    Line("k5axCMachDef_head", Read<AngledHead>(Native.k5axCMachDef_head_const(machine)).Length1);
    changed.Length1 = 0;
    Marshal.StructureToPtr(changed, head, false);
    Console.WriteLine("k5axCMachDef_head_const:{0}",
                      Numbers.Text(Read<AngledHead>(Native.k5axCMachDef_head_const(machine)).ToolDir));

    Print("k5axCMachDef_axis", Native.k5axCMachDef_axis(0, machine));
    Console.WriteLine("k5axCMachDef_axis: {0} {1}",
                      (int)Read<AxisRecord>(Native.k5axCMachDef_axis(1, machine)).Type,
                      There(Native.k5axCMachDef_axis(2, machine)));
    Print("k5axCMachDef_rotary_axis", Native.k5axCMachDef_rotary_axis(machine));
    Print("k5axCMachDef_rotary_axis_const", Native.k5axCMachDef_rotary_axis_const(machine));
    Console.WriteLine("k5axCMachDef_SG: {0} {1}", Native.k5axSgNode_id(Native.k5axCMachDef_SG(machine, 0)),
                      Native.k5axSgNode_id(Native.k5axCMachDef_SG(machine, 1)));
    Console.WriteLine("k5axCMachDef_Tool: {0}", There(Native.k5axCMachDef_Tool(machine)));
  }

  static string TypeAndTree(MachineHandle machine) {
    return (int)Native.k5axCMachDef_type(machine) + " " + There(Native.k5axCMachDef_SG(machine, 0));
  }

  static void Copies(MachineHandle machine, string folder) {
    using (MachineHandle copy = Native.k5axCMachDef_create()) {
      Native.k5axCMachDef_clone_ex(copy, machine, 1);
      string first = TypeAndTree(copy);
      Native.k5axCMachDef_clone_ex(copy, machine, 2);
      Console.WriteLine("k5axCMachDef_clone_ex: {0} {1}", first, TypeAndTree(copy));
      Native.k5axCMachDef_clone(copy, machine);
      Console.WriteLine("k5axCMachDef_clone: {0}", TypeAndTree(copy));

      bool before = Native.k5axCMachDef_orthogonal(copy);
      bool turned = Native.k5axCMachDef_orientate(copy, 90 * Native.k5ax_D2R(), 0);
      Console.WriteLine("k5axCMachDef_orientate: {0}{1}", Bit(turned),
                        Numbers.Text(Read<AxisRecord>(Native.k5axCMachDef_axis(1, copy)).Vector));
      Console.WriteLine("k5axCMachDef_orthogonal: {0} {1}", Bit(before),
                        Bit(Native.k5axCMachDef_orthogonal(copy)));

      int nowhere = Native.MachdefSave(machine, folder + "/gone/grüße.k5m");
      int saved = Native.MachdefSave(machine, folder + "/grüße.k5m");
      Console.WriteLine("MachdefSave: {0} {1} {2}", nowhere, saved,
                        Native.MachdefLoad(copy, folder + "/grüße.k5m"));
    }
    IntPtr none = IntPtr.Zero;
    Native.k5axCMachDef_free(ref none);
    Console.WriteLine("k5axCMachDef_free: done");
  }

  static void Nodes(MachineHandle machine) {
    IntPtr root = Native.k5axCMachDef_SG(machine, 0);
    Console.WriteLine("k5axSgNode_child_count: {0}", Native.k5axSgNode_child_count(root));
    IntPtr y = Native.k5axSgNode_child(root, 0);
    Console.WriteLine("k5axSgNode_child: {0}", Native.k5axSgNode_id(y));
    Console.WriteLine("k5axSgNode_parent: {0} {1}", Native.k5axSgNode_id(Native.k5axSgNode_parent(y)),
                      There(Native.k5axSgNode_parent(root)));
    var all = new IntPtr[5];
    Console.WriteLine("k5axSgNode_all_nodes: {0}", Native.k5axSgNode_all_nodes(root, all));
    Console.WriteLine("k5axSgNode_id: {0}", string.Join(" ", all.Select(Native.k5axSgNode_id)));
    Console.WriteLine("k5axSgNode_NodeAxis_cast: {0} {1}", There(Native.k5axSgNode_NodeAxis_cast(root)),
                      There(Native.k5axSgNode_NodeAxis_cast(y)));
    Console.WriteLine("k5axSgNode_calc_flags: {0} {1} {2}", Native.k5axSgNode_calc_flags(0, 7),
                      Native.k5axSgNode_calc_flags(7, 0), Native.k5axSgNode_calc_flags(7, 7));

    Console.WriteLine("k5axSgNode_flags_get: {0}", Native.k5axSgNode_flags_get(y));
    Native.k5axSgNode_flags_set(y, 0xffffffff);
    Console.WriteLine("k5axSgNode_flags_set: {0}", Native.k5axSgNode_flags_get(y));
    Native.k5axSgNode_flags_set(y, 1);
    Native.k5axSgNode_value_set(y, 7);
    var matrix = new double[12];
    BridgeNative.k5ax_bridge_node_matrix(y, matrix);
    Line("k5axSgNode_value_set", matrix[10]);
    Line("k5axSgNode_value_get", Native.k5axSgNode_value_get(y));
    Native.k5axSgNode_value_set2(Native.k5axCMachDef_flags_get(machine), y, -14.5);
    BridgeNative.k5ax_bridge_node_matrix(y, matrix);
    Line("k5axSgNode_value_set2", matrix[10]);
    NodeState state;
    Native.k5axSgNode_state_get_(y, out state);
    Console.WriteLine("k5axSgNode_state_get_: {0} {1}{2}", state.Id, state.Flags, Numbers.Text(state.Value));

    IntPtr[] asked = { root, y, all[4], IntPtr.Zero };
    Console.WriteLine("k5ax_bridge_node_kind: {0}",
                      string.Join(" ", asked.Select(BridgeNative.k5ax_bridge_node_kind)));
    Line("k5ax_bridge_node_matrix", matrix);
    Print("k5ax_bridge_node_axis", BridgeNative.k5ax_bridge_node_axis(y));
    Console.WriteLine("k5ax_bridge_node_axis: {0}", There(BridgeNative.k5ax_bridge_node_axis(root)));

    Native.k5axSgNode_initialise(root, 0);
    double kept = Native.k5axSgNode_value_get(y);
    Native.k5axSgNode_initialise(root, 1);
    Line("k5axSgNode_initialise", kept, Native.k5axSgNode_value_get(y));
  }

  static double At(MachineHandle machine, int id) {
    return Native.CMachDef_Axis_Position_Get(machine, id);
  }

  static void Pose(MachineHandle machine) {
    double a = -40 * Native.k5ax_D2R();
    double c = 90 * Native.k5ax_D2R();
    var tree = new IntPtr[7];
    Native.k5axSgNode_all_nodes(Native.k5axCMachDef_SG(machine, 1), tree);

    bool far = Native.UpdateNodeAxes_2(machine, double.PositiveInfinity, 20, 50, a, 0, c);
    Native.k5axSgNode_value_set2(0, tree[2], 0);
    Native.k5axSgNode_value_set2(0, tree[4], 0);
    bool near = Native.UpdateNodeAxes_2(machine, 30, 20, 50, a, 0, c);
    Console.WriteLine("UpdateNodeAxes_2: {0} {1}", Bit(far), Bit(near));
    Line("CMachDef_Axis_Position_Get", At(machine, 3), At(machine, 99));
    var back = new double[6];
    Native.k5axCMachDef_SG2MachCoords(machine, back);
    Line("k5axCMachDef_SG2MachCoords", back);

    Native.k5axSgNode_value_set2(0, tree[2], 0);
    Native.k5axSgNode_value_set2(0, tree[4], 0);
    int reached = Native.k5axCMachDef_MachCoords2SG(machine, new double[] { 1, 2, 3, 0, 0, 0 });
    Console.WriteLine("k5axCMachDef_MachCoords2SG: {0}{1}", reached,
                      Numbers.Text(At(machine, 1), At(machine, 2), At(machine, 3)));

    NodeState[] states = { new NodeState { Id = 2, Flags = 1, Value = 12 },
                           new NodeState { Id = 3, Flags = 1, Value = -34 } };
    int none = Native.CMachDef_IdAxisState_set2(machine, states, 0);
    int both = Native.CMachDef_IdAxisState_set2(machine, states, 2);
    Console.WriteLine("CMachDef_IdAxisState_set2: {0} {1}{2}", none, both,
                      Numbers.Text(At(machine, 2), At(machine, 3)));

    Native.CMachDef_ToolNode_matrix_SetXYZ(machine, 0, 6, 200);
    Native.UpdateNodeAxes_2(machine, 30, 20, 50, 0, 0, 0);
    Line("CMachDef_ToolNode_matrix_SetXYZ", At(machine, 2), At(machine, 3));

    var point = new double[3];
    var rotary = new double[3];
    double radius = 0;
    Native.Cartesian2AxialRotaryVals_c(machine, new double[] { 0, 3, 5 }, new double[3], 0, 1, point, rotary,
                                       ref radius);
    Line("Cartesian2AxialRotaryVals_c", point.Concat(rotary).Concat(new[] { radius }).ToArray());

    var part = new Point(30, 20, 50);
    var abc = new Point(a, 0, c);
    Point mach, again, direction;
    BridgeNative.k5ax_bridge_part_to_machine(machine, ref part, ref abc, out mach);
    Console.WriteLine("k5ax_bridge_part_to_machine:{0}", Numbers.Text(mach));
    BridgeNative.k5ax_bridge_machine_to_part(machine, ref mach, ref abc, out again, out direction);
    Console.WriteLine("k5ax_bridge_machine_to_part:{0}{1}", Numbers.Text(again), Numbers.Text(direction));
  }

  // ---- the channels ----

  static string Bytes(string text) {
    return string.Concat(Encoding.UTF8.GetBytes(text).Select(b => " " + b.ToString("x2")));
  }

  static void Speak() {
    BridgeNative.k5ax_bridge_feedback("grüße");
    BridgeNative.k5ax_bridge_error("e", 70000);
    BridgeNative.k5ax_bridge_assertion_failed("a", "b", "c", 12);
  }

  static void Channels(MachineHandle machine) {
    using (MachineHandle empty = Native.k5axCMachDef_create())
      Console.WriteLine("k5ax_bridge_is_valid: {0} {1}", BridgeNative.k5ax_bridge_is_valid(machine),
                        BridgeNative.k5ax_bridge_is_valid(empty));

    BridgeNative.TextSink text =
        (t, data) => Console.WriteLine("k5ax_bridge_feedback:{0} {1}", Bytes(t), data);
    BridgeNative.ErrorSink error =
        (t, code, data) => Console.WriteLine("k5ax_bridge_error:{0} {1} {2}", Bytes(t), code, data);
    BridgeNative.AssertionSink assertion = (a, b, c, line, data) => Console.WriteLine(
        "k5ax_bridge_assertion_failed:{0}{1}{2} {3} {4}", Bytes(a), Bytes(b), Bytes(c), line, data);
    BridgeNative.k5ax_bridge_on_feedback(text, (IntPtr)71);
    BridgeNative.k5ax_bridge_on_error(error, (IntPtr)72);
    BridgeNative.k5ax_bridge_on_assertion(assertion, (IntPtr)73);
    Speak();
    GC.KeepAlive(new object[] { text, error, assertion });
    BridgeNative.k5ax_bridge_on_feedback(null, IntPtr.Zero);
    BridgeNative.k5ax_bridge_on_error(null, IntPtr.Zero);
    BridgeNative.k5ax_bridge_on_assertion(null, IntPtr.Zero);
    Speak();
    Console.WriteLine("k5ax_bridge_on_feedback, k5ax_bridge_on_error, k5ax_bridge_on_assertion: quiet");
  }

  static int Main(string[] args) {
    if (args.Length != 2) {
      Console.Error.WriteLine("usage: face MACHINE FOLDER");
      return 2;
    }
    Layout();
    Process();
    Head();
    Axis();
    using (MachineHandle machine = Made(args[0])) {
      Parts(machine);
      Copies(machine, args[1]);
      Nodes(machine);
      Pose(machine);
      Channels(machine);
    }
    return 0;
  }
}
