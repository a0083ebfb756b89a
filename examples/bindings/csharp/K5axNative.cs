// The flat functions of k5ax as they are, one declaration each. Programs use the classes in K5ax.cs.
//
// Integers are 32 bits, a C bool is one byte, records have the layout of C, strings go over as UTF-8. A
// pointer that the library lends is an IntPtr here: it belongs to its machine and ends with it.
using System;
using System.Runtime.InteropServices;

namespace K5ax {
  /// The letter of an axis. A file may hold any other number, too.
  public enum AxisType { InvalidLowest = -1, A, B, C, X, Y, Z, Dummy, InvalidHighest }

  public enum AxisMode { InvalidLowest = -1, Rotary, Linear, InvalidHighest }

  public enum AxisLocation { InvalidLowest = -1, Head, Table, InvalidHighest }

  /// Where the two rotary axes sit: on the table, on both, on the head.
  public enum MachineType { Undefined = -1, TableTable, HeadTable, HeadHead }

  [StructLayout(LayoutKind.Sequential)]
  public struct Point {
    public double X, Y, Z;

    public Point(double x, double y, double z) {
      X = x;
      Y = y;
      Z = z;
    }
  }

  /// TAxis: one axis. Lengths are in the machine's unit, angles in radians.
  [StructLayout(LayoutKind.Sequential)]
  public struct AxisRecord {
    public Point Base;
    public Point Vector;
    public AxisType Type;
    public AxisLocation Location;
    public double Min;
    public double Max;
    public AxisMode Mode;
  }

  /// angled_head: lengths in the machine's unit, angles in radians.
  [StructLayout(LayoutKind.Sequential)]
  public struct AngledHead {
    public double BAngle;
    public double CAngle;
    public double Length1;
    public double Length2;
    public Point Tip;
    public Point ToolDir;
    public Point RefDir;
    public Point Offset;
    public uint Flags;
  }

  /// node_state: the live state of one axis node.
  [StructLayout(LayoutKind.Sequential)]
  public struct NodeState {
    public int Id;
    public uint Flags;
    public double Value;
  }

  /// A machine that this handle owns: freed when the handle is disposed of, or by the garbage collector.
  public sealed class MachineHandle : SafeHandle {
    MachineHandle() : base(IntPtr.Zero, true) {}

    public override bool IsInvalid {
      get { return handle == IntPtr.Zero; }
    }

    // The garbage collector calls this on a thread of its own, and what a machine gives back goes to pools
    // that one thread at a time may use.
    protected override bool ReleaseHandle() {
      lock (Native.Pools) {
        IntPtr machine = handle;
        Native.k5axCMachDef_free(ref machine);
      }
      return true;
    }
  }

  /// Hold `Pools` while you call what creates, clones, loads or frees a machine, and for
  /// `Cartesian2AxialRotaryVals_c`.
  public static class Native {
    // libk5ax.so on Linux, k5ax.dll on Windows; k5ax.config names the library for mono.
    const string Library = "k5ax";
    const CallingConvention C = CallingConvention.Cdecl;

    public static readonly object Pools = new object();

    // ---- the process, angles ----

    [DllImport(Library, CallingConvention = C)]
    public static extern uint md_flags_get();

    [DllImport(Library, CallingConvention = C)]
    public static extern void md_flags_set(uint flags);

    [DllImport(Library, CallingConvention = C)]
    public static extern int md_regression();

    [DllImport(Library, CallingConvention = C)]
    public static extern double k5ax_R2D();

    [DllImport(Library, CallingConvention = C)]
    public static extern double k5ax_D2R();

    [DllImport(Library, CallingConvention = C)]
    public static extern double k5ax_normalise_angle(double angle, int range);

    // ---- the angled head ----

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_angled_head_initialise(out AngledHead head);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_angled_head_copy(out AngledHead dst, ref AngledHead src);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint k5ax_angled_head_flags_get(ref AngledHead head);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_angled_head_flags_set(ref AngledHead head, uint flags);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_angled_head_set(double c_degrees, double b_degrees, [In] double[] lengths,
                                                   double side_offset, ref AngledHead head);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5ax_is_angled_head(ref AngledHead head);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5ax_is_angled_head(IntPtr head);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_angled_head_scale(ref AngledHead head, double factor);

    // ---- axis records ----

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr axis_clone(ref AxisRecord axis);

    [DllImport(Library, CallingConvention = C)]
    public static extern int axis_copy(ref AxisRecord to, ref AxisRecord from);

    [DllImport(Library, CallingConvention = C)]
    public static extern int axis_free(ref IntPtr axis);

    [DllImport(Library, CallingConvention = C)]
    public static extern AxisLocation axis_location(ref AxisRecord axis);

    // The address of the record's min: give it a record that stays where it is, such as one of a machine.
    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr axis_limits(IntPtr axis);

    [DllImport(Library, CallingConvention = C)]
    public static extern double axis_get_value(ref AxisRecord axis, double x, double y, double z);

    [DllImport(Library, CallingConvention = C)]
    public static extern int axis_set_value(ref AxisRecord axis, double value, ref double x, ref double y,
                                            ref double z);

    // Answers one of the six pointers, so they have to be pinned.
    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr AXIS_TYPE_val_get(AxisType type, IntPtr x, IntPtr y, IntPtr z, IntPtr a,
                                                  IntPtr b, IntPtr c);

    // ---- the machine ----

    [DllImport(Library, CallingConvention = C)]
    public static extern MachineHandle k5axCMachDef_create();

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axCMachDef_free(ref IntPtr machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axCMachDef_clone(MachineHandle dst, MachineHandle src);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axCMachDef_clone_ex(MachineHandle dst, MachineHandle src, uint flags);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint k5axCMachDef_flags_get(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axCMachDef_flags_set(MachineHandle machdef, uint flags);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5axCMachDef_mode(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern MachineType k5axCMachDef_type(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5axCMachDef_discipline(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axCMachDef_head(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axCMachDef_head_const(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axCMachDef_axis(int which, MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axCMachDef_rotary_axis(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axCMachDef_rotary_axis_const(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool k5axCMachDef_orthogonal(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool k5axCMachDef_orientate(MachineHandle machdef, double angle1, double angle2);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axCMachDef_SG(MachineHandle machdef, int i);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axCMachDef_Tool(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern int MachdefSave(MachineHandle machdef,
                                         [MarshalAs(UnmanagedType.LPUTF8Str)] string path);

    [DllImport(Library, CallingConvention = C)]
    public static extern int MachdefLoad(MachineHandle machdef,
                                         [MarshalAs(UnmanagedType.LPUTF8Str)] string path);

    // ---- posing ----

    [DllImport(Library, CallingConvention = C)]
    public static extern void Cartesian2AxialRotaryVals_c(MachineHandle machdef, [In] double[] point,
                                                          [In] double[] rotary, int refAxis, int refSign,
                                                          [In, Out] double[] outPoint,
                                                          [In, Out] double[] outRotary, ref double radius);

    [DllImport(Library, CallingConvention = C)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool UpdateNodeAxes_2(MachineHandle machdef, double x, double y, double z, double a,
                                               double b, double c);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5axCMachDef_MachCoords2SG(MachineHandle machdef, [In] double[] v);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axCMachDef_SG2MachCoords(MachineHandle machdef, [In, Out] double[] v);

    [DllImport(Library, CallingConvention = C)]
    public static extern int CMachDef_IdAxisState_set2(MachineHandle machdef, [In] NodeState[] states,
                                                       int count);

    [DllImport(Library, CallingConvention = C)]
    public static extern double CMachDef_Axis_Position_Get(MachineHandle machdef, int id);

    [DllImport(Library, CallingConvention = C)]
    public static extern void CMachDef_ToolNode_matrix_SetXYZ(MachineHandle machdef, double x, double y,
                                                              double z);

    // ---- nodes ----

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5axSgNode_child_count(IntPtr node);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axSgNode_child(IntPtr node, int index);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axSgNode_parent(IntPtr node);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5axSgNode_all_nodes(IntPtr node, [In, Out] IntPtr[] buffer);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5axSgNode_id(IntPtr node);

    [DllImport(Library, CallingConvention = C)]
    public static extern double k5axSgNode_value_get(IntPtr node);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axSgNode_value_set(IntPtr node, double value);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axSgNode_value_set2(uint selector, IntPtr n, double value);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint k5axSgNode_flags_get(IntPtr node);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axSgNode_flags_set(IntPtr node, uint flags);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axSgNode_initialise(IntPtr node, int recursive);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint k5axSgNode_calc_flags(int first, int second);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5axSgNode_state_get_(IntPtr node, out NodeState state);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5axSgNode_NodeAxis_cast(IntPtr node);
  }
}
