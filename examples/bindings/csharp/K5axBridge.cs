// The bridge for C#: what a machine answers through its C++ classes alone, from the library in ../bridge.
using System;
using System.Runtime.ExceptionServices;
using System.Runtime.InteropServices;

namespace K5ax {
  public static class BridgeNative {
    const string Library = "k5ax_bridge";
    const CallingConvention C = CallingConvention.Cdecl;

    [UnmanagedFunctionPointer(C)]
    public delegate void TextSink([MarshalAs(UnmanagedType.LPUTF8Str)] string text, IntPtr data);

    [UnmanagedFunctionPointer(C)]
    public delegate void ErrorSink([MarshalAs(UnmanagedType.LPUTF8Str)] string text, int code, IntPtr data);

    [UnmanagedFunctionPointer(C)]
    public delegate void AssertionSink([MarshalAs(UnmanagedType.LPUTF8Str)] string a,
                                       [MarshalAs(UnmanagedType.LPUTF8Str)] string b,
                                       [MarshalAs(UnmanagedType.LPUTF8Str)] string c, int line, IntPtr data);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5ax_bridge_is_valid(MachineHandle machdef);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_part_to_machine(MachineHandle machdef, ref Point p_part,
                                                          ref Point abc, out Point p_mach);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_machine_to_part(MachineHandle machdef, ref Point p_mach,
                                                          ref Point abc, out Point p_part,
                                                          out Point d_tool_part);

    [DllImport(Library, CallingConvention = C)]
    public static extern int k5ax_bridge_node_kind(IntPtr node);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_node_matrix(IntPtr node, [In, Out] double[] node_to_parent);

    [DllImport(Library, CallingConvention = C)]
    public static extern IntPtr k5ax_bridge_node_axis(IntPtr node);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_on_feedback(TextSink sink, IntPtr data);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_on_error(ErrorSink sink, IntPtr data);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_on_assertion(AssertionSink sink, IntPtr data);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_feedback([MarshalAs(UnmanagedType.LPUTF8Str)] string text);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_error([MarshalAs(UnmanagedType.LPUTF8Str)] string text, int code);

    [DllImport(Library, CallingConvention = C)]
    public static extern void k5ax_bridge_assertion_failed([MarshalAs(UnmanagedType.LPUTF8Str)] string a,
                                                           [MarshalAs(UnmanagedType.LPUTF8Str)] string b,
                                                           [MarshalAs(UnmanagedType.LPUTF8Str)] string c,
                                                           int line);
  }

  /// The library's channels to the host. They belong to the process: install sinks before threads start.
  public static class Diagnostics {
    const uint Developer = 2;

    // [snippet keep]
    // The library holds the address of a delegate, and the garbage collector does not know: they are held
    // here, each until the next one is in its place.
    static BridgeNative.TextSink feedback;
    static BridgeNative.ErrorSink error;
    static BridgeNative.AssertionSink assertion;

    public static void OnFeedback(Action<string> sink) {
      BridgeNative.TextSink native = null;
      if (sink != null) native = (text, data) => Guard(() => sink(text));
      BridgeNative.k5ax_bridge_on_feedback(native, IntPtr.Zero);
      GC.KeepAlive(feedback);
      feedback = native;
    }
    // [end]

    public static void OnError(Action<string, int> sink) {
      BridgeNative.ErrorSink native = null;
      if (sink != null) native = (text, code, data) => Guard(() => sink(text, code));
      BridgeNative.k5ax_bridge_on_error(native, IntPtr.Zero);
      GC.KeepAlive(error);
      error = native;
    }

    public static void OnAssertion(Action<string, string, string, int> sink) {
      BridgeNative.AssertionSink native = null;
      if (sink != null) native = (a, b, c, line, data) => Guard(() => sink(a, b, c, line));
      BridgeNative.k5ax_bridge_on_assertion(native, IntPtr.Zero);
      GC.KeepAlive(assertion);
      assertion = native;
    }

    public static void SendFeedback(string text) {
      BridgeNative.k5ax_bridge_feedback(text);
      Rethrow();
    }

    public static void SendError(string text, int code) {
      BridgeNative.k5ax_bridge_error(text, code);
      Rethrow();
    }

    public static void SendAssertion(string a, string b, string c, int line) {
      BridgeNative.k5ax_bridge_assertion_failed(a, b, c, line);
      Rethrow();
    }

    /// In developer mode the library says why a machine is not valid.
    public static bool IsDeveloper {
      get { return (Native.md_flags_get() & Developer) != 0; }
      set {
        uint others = Native.md_flags_get() & ~Developer;
        Native.md_flags_set(value ? others | Developer : others);
      }
    }

    // No exception may cross the native frames between a sink and the call that made the library speak: it is
    // kept, and thrown after that call.
    [ThreadStatic]
    static ExceptionDispatchInfo thrown;

    static void Guard(Action work) {
      try {
        work();
      } catch (Exception e) {
        thrown = ExceptionDispatchInfo.Capture(e);
      }
    }

    internal static void Rethrow() {
      ExceptionDispatchInfo kept = thrown;
      thrown = null;
      if (kept != null) kept.Throw();
    }
  }

  public enum NodeKind { Plain, Axis, Tool }

  public static class Bridge {
    /// Can the machine be worked with?
    public static bool IsValid(this Machine machine) {
      int answer = BridgeNative.k5ax_bridge_is_valid(machine.Handle);
      Diagnostics.Rethrow();
      if (answer < 0) throw new OutOfMemoryException();
      return answer == 1;
    }

    /// Where the machine has to go for a point on the part, at angles in radians.
    public static Point PartToMachine(this Machine machine, Point part, Point abc) {
      Point result;
      BridgeNative.k5ax_bridge_part_to_machine(machine.Handle, ref part, ref abc, out result);
      return result;
    }

    public static Point MachineToPart(this Machine machine, Point xyz, Point abc, out Point toolDirection) {
      Point result;
      BridgeNative.k5ax_bridge_machine_to_part(machine.Handle, ref xyz, ref abc, out result,
                                               out toolDirection);
      return result;
    }

    public static NodeKind Kind(this Node node) {
      return (NodeKind)node.Ask<int>(BridgeNative.k5ax_bridge_node_kind);
    }

    /// Twelve numbers, to the parent's frame: the images of X, Y and Z, then that of the origin.
    public static double[] Matrix(this Node node) {
      var matrix = new double[12];
      node.Tell(p => BridgeNative.k5ax_bridge_node_matrix(p, matrix));
      return matrix;
    }

    /// A copy of the axis that the node carries; null for another kind of node.
    public static AxisRecord? Axis(this Node node) {
      return node.Ask(p => {
        IntPtr axis = BridgeNative.k5ax_bridge_node_axis(p);
        if (axis == IntPtr.Zero) return (AxisRecord?)null;
        return (AxisRecord)Marshal.PtrToStructure(axis, typeof(AxisRecord));
      });
    }
  }
}
