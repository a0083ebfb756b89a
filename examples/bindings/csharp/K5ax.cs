// k5ax for C#: machines and the nodes of their trees as objects.
//
// A Machine owns its native machine; dispose of it, or leave it to the garbage collector. A Node is lent by
// its machine, keeps it alive, and throws ObjectDisposedException after it was disposed of. One thread at a
// time works with a machine. What is missing is null; what fails throws.
using System;
using System.Collections.Generic;
using System.IO;
using System.Runtime.InteropServices;

namespace K5ax {
  /// A machine definition that cannot be loaded or saved.
  public sealed class MachineFileException : IOException {
    public MachineFileException(string message) : base(message) {}
  }

  /// A point turned about the machine's rotary axis; see `Machine.Wrap`.
  public struct WrappedPoint {
    public Point Point;
    public Point Rotary;
    public double Radius;
  }

  public sealed class Machine : IDisposable {
    internal readonly MachineHandle Handle;

    /// An empty machine.
    public Machine() {
      lock (Native.Pools) Handle = Native.k5axCMachDef_create();
    }

    public static Machine Load(string path) {
      CheckPath(path);
      var machine = new Machine();
      int loaded;
      lock (Native.Pools) loaded = Native.MachdefLoad(machine.Handle, path);
      if (loaded != 0) return machine;

      machine.Dispose();
      throw new MachineFileException(path + ": not there, damaged, or no machine definition");
    }

    /// What stood at `path` is replaced only when everything is on the disk.
    public void Save(string path) {
      CheckPath(path);
      if (Native.MachdefSave(Handle, path) == 0)
        throw new MachineFileException(path + ": cannot be written; the file is as it was");
    }

    public Machine Clone() {
      var copy = new Machine();
      lock (Native.Pools) Native.k5axCMachDef_clone(copy.Handle, Handle);
      return copy;
    }

    public void Dispose() {
      Handle.Dispose();
    }

    public MachineType Type {
      get { return Native.k5axCMachDef_type(Handle); }
    }

    /// The host's mode and discipline; the library never looks at them.
    public int Mode {
      get { return Native.k5axCMachDef_mode(Handle); }
    }

    public int Discipline {
      get { return Native.k5axCMachDef_discipline(Handle); }
    }

    public uint Flags {
      get { return Native.k5axCMachDef_flags_get(Handle); }
      set { Native.k5axCMachDef_flags_set(Handle, value); }
    }

    /// A copy of the angled head; set it to change the machine's.
    public AngledHead Head {
      get { return Read<AngledHead>(Native.k5axCMachDef_head_const(Handle)).Value; }
      set {
        using (new Hold(Handle)) Marshal.StructureToPtr(value, Native.k5axCMachDef_head(Handle), false);
      }
    }

    public bool HasAngledHead {
      get {
        AngledHead head = Head;
        return Native.k5ax_is_angled_head(ref head) == 1;
      }
    }

    /// Copies of the rotary axes; null where there is none.
    public AxisRecord? Primary {
      get { return Read<AxisRecord>(Native.k5axCMachDef_axis(0, Handle)); }
    }

    public AxisRecord? Secondary {
      get { return Read<AxisRecord>(Native.k5axCMachDef_axis(1, Handle)); }
    }

    /// The one of them that turns the part.
    public AxisRecord? RotaryAxis {
      get { return Read<AxisRecord>(Native.k5axCMachDef_rotary_axis_const(Handle)); }
    }

    public bool IsOrthogonal {
      get { return Native.k5axCMachDef_orthogonal(Handle); }
    }

    /// Turns the definition itself into the pose for two angles in radians; false for an unknown type.
    public bool Orientate(double angle1, double angle2) {
      return Native.k5axCMachDef_orientate(Handle, angle1, angle2);
    }

    /// The root of tree 0, down to the tool, or 1, from the part to the machine frame; null without nodes.
    public Node Tree(int which) {
      if (which != 0 && which != 1) throw new ArgumentOutOfRangeException("which", which, "0 or 1");
      return Node.At(this, Native.k5axCMachDef_SG(Handle, which));
    }

    public bool HasTool {
      get { return Native.k5axCMachDef_Tool(Handle) != IntPtr.Zero; }
    }

    /// Poses the trees at machine coordinates and angles in radians; false where the point cannot be reached.
    /// The update measures with the table as it stands: bring its rotary nodes to 0 first (`Node.MoveTo`).
    public bool Pose(Point xyz, Point abc) {
      return Native.UpdateNodeAxes_2(Handle, xyz.X, xyz.Y, xyz.Z, abc.X, abc.Y, abc.Z);
    }

    /// X, Y, Z, A, B, C as the trees stand.
    public double[] ReadCoordinates() {
      var xyzabc = new double[6];
      Native.k5axCMachDef_SG2MachCoords(Handle, xyzabc);
      return xyzabc;
    }

    /// What the axis node with this id stands at; 0 where there is none.
    public double AxisPosition(int id) {
      return Native.CMachDef_Axis_Position_Get(Handle, id);
    }

    public void Restore(NodeState[] states) {
      if (states == null) throw new ArgumentNullException("states");
      Native.CMachDef_IdAxisState_set2(Handle, states, states.Length);
    }

    /// Places the tool node for a tool point.
    public void PlaceTool(Point p) {
      Native.CMachDef_ToolNode_matrix_SetXYZ(Handle, p.X, p.Y, p.Z);
    }

    /// The point turned about the machine's rotary axis into the half-plane of axis 0, 1 or 2, on the side of
    /// `refSign`.
    public WrappedPoint Wrap(Point point, Point rotary, int refAxis, int refSign) {
      double[] outPoint = { 0, 0, 0 };
      double[] outRotary = { 0, 0, 0 };
      double radius = 0;
      lock (Native.Pools)
        Native.Cartesian2AxialRotaryVals_c(Handle, new[] { point.X, point.Y, point.Z },
                                           new[] { rotary.X, rotary.Y, rotary.Z }, refAxis, refSign, outPoint,
                                           outRotary, ref radius);
      return new WrappedPoint {
        Point = new Point(outPoint[0], outPoint[1], outPoint[2]),
        Rotary = new Point(outRotary[0], outRotary[1], outRotary[2]),
        Radius = radius
      };
    }

    // A copy of a record that the machine lends, made while the machine is there for certain.
    T? Read<T>(IntPtr record) where T : struct {
      if (record == IntPtr.Zero) return null;
      using (new Hold(Handle)) return (T)Marshal.PtrToStructure(record, typeof(T));
    }

    static void CheckPath(string path) {
      if (path == null) throw new ArgumentNullException("path");
      if (path.IndexOf('\0') >= 0) throw new ArgumentException("a path has no character 0", "path");
    }
  }

  /// One node of a machine's trees.
  public sealed class Node {
    readonly Machine machine;
    readonly IntPtr pointer;

    Node(Machine machine, IntPtr pointer) {
      this.machine = machine;
      this.pointer = pointer;
    }

    internal static Node At(Machine machine, IntPtr pointer) {
      return pointer == IntPtr.Zero ? null : new Node(machine, pointer);
    }

    public int Id {
      get { return Ask<int>(Native.k5axSgNode_id); }
    }

    public uint Flags {
      get { return Ask<uint>(Native.k5axSgNode_flags_get); }
      set { Tell(p => Native.k5axSgNode_flags_set(p, value)); }
    }

    /// Radians for a rotary axis, a length for a linear one. Setting it leaves the transform; see `MoveTo`.
    public double Value {
      get { return Ask<double>(Native.k5axSgNode_value_get); }
      set { Tell(p => Native.k5axSgNode_value_set(p, value)); }
    }

    public bool IsAxis {
      get { return Ask(p => Native.k5axSgNode_NodeAxis_cast(p) != IntPtr.Zero); }
    }

    public NodeState State {
      get {
        return Ask(p => {
          NodeState state;
          Native.k5axSgNode_state_get_(p, out state);
          return state;
        });
      }
    }

    public Node Parent {
      get { return At(machine, Ask<IntPtr>(Native.k5axSgNode_parent)); }
    }

    public IList<Node> Children {
      get {
        var children = new List<Node>();
        Tell(p => {
          int count = Native.k5axSgNode_child_count(p);
          for (int i = 0; i < count; ++i) children.Add(At(machine, Native.k5axSgNode_child(p, i)));
        });
        return children;
      }
    }

    /// Sets an axis node to a value, and its transform with it.
    public void MoveTo(double value) {
      Tell(p => Native.k5axSgNode_value_set2(machine.Flags, p, value));
    }

    /// Identity and value 0, unless the id is -999.
    public void Initialise(bool recursive) {
      Tell(p => Native.k5axSgNode_initialise(p, recursive ? 1 : 0));
    }

    /// The machine, and with it this node, stays there while the question is asked.
    internal T Ask<T>(Func<IntPtr, T> question) {
      using (new Hold(machine.Handle)) return question(pointer);
    }

    internal void Tell(Action<IntPtr> order) {
      using (new Hold(machine.Handle)) order(pointer);
    }
  }

  /// Keeps the machine from being freed; throws ObjectDisposedException when it is already.
  struct Hold : IDisposable {
    readonly MachineHandle handle;

    internal Hold(MachineHandle handle) {
      this.handle = handle;
      bool held = false;
      handle.DangerousAddRef(ref held);
    }

    public void Dispose() {
      handle.DangerousRelease();
    }
  }
}
