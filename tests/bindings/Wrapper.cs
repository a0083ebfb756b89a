// Wrapper MACHINE FOLDER: what the classes of the C# binding add to the functions: who frees a machine, and
// when; what is refused; what a callback may do. Ends with 1 and says which when an expectation is not met.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Threading;
using K5ax;

static class Wrapper {
  static int met;
  static int failed;

  static void Expect(string what, bool isSo) {
    if (isSo) {
      ++met;
      return;
    }
    ++failed;
    Console.WriteLine("not so: {0}", what);
  }

  static void Throws<T>(string what, Action work) where T : Exception {
    try {
      work();
      Expect(what + ": nothing was thrown", false);
    } catch (T) {
      Expect(what, true);
    } catch (Exception e) {
      Expect(what + ": " + e.GetType(), false);
    }
  }

  static bool Near(double a, double b) {
    return Math.Abs(a - b) < 1e-9;
  }

  static void Collect() {
    for (int i = 0; i < 3; ++i) {
      GC.Collect();
      GC.WaitForPendingFinalizers();
    }
  }

  // What a thread held on its stack is held no longer when it has ended.
  static void OnAThread(Action work) {
    var thread = new Thread(() => work());
    thread.Start();
    thread.Join();
  }

  // ---- what the classes answer ----

  static void Answers(string file) {
    using (Machine machine = Machine.Load(file)) {
      Expect("table-table", machine.Type == MachineType.TableTable);
      Expect("no mode", machine.Mode == -1 && machine.Discipline == 0);
      Expect("A", machine.Primary.Value.Type == AxisType.A);
      Expect("C", machine.Secondary.Value.Type == AxisType.C);
      Expect("C turns the part", machine.RotaryAxis.Value.Base.Z == -85);
      Expect("valid, orthogonal", machine.IsValid() && machine.IsOrthogonal);
      Expect("straight", !machine.HasAngledHead);
      Expect("a tool", machine.HasTool);
      machine.Flags = 0x80000004;
      Expect("flags", machine.Flags == 0x80000004 && machine.Head.Flags == 0x80000004);
      AngledHead head = machine.Head;
      head.BAngle = 0.5;
      machine.Head = head;
      Expect("the head that was set", machine.Head.BAngle == 0.5 && machine.HasAngledHead);

      // As in face.expected: a quarter turn away, at a distance of 3.
      WrappedPoint wrapped = machine.Wrap(new Point(0, 3, 5), new Point(), 0, 1);
      Expect("wrapped", Near(wrapped.Point.X, 3) && Near(wrapped.Rotary.Z, Math.PI / 2));
      Expect("the radius", Near(wrapped.Radius, 3));
      Point direction;
      var abc = new Point(0, 0, Math.PI / 2);
      Point back = machine.MachineToPart(machine.PartToMachine(new Point(1, 2, 3), abc), abc, out direction);
      Expect("there and back", Near(back.X, 1) && Near(back.Y, 2) && Near(back.Z, 3));
      Expect("the tool direction", direction.Z == 1);  // of the tilt alone the head's direction knows nothing
    }
    using (var empty = new Machine()) {
      Expect("an empty machine has nothing", empty.Primary == null && empty.Secondary == null &&
                                                 empty.RotaryAxis == null && empty.Tree(0) == null &&
                                                 !empty.HasTool && !empty.IsValid());
      Expect("and no type", empty.Type == MachineType.Undefined && !empty.Orientate(1, 1));
    }
  }

  static void Nodes(string file) {
    using (Machine machine = Machine.Load(file)) {
      Node root = machine.Tree(0);
      Node y = root.Children.Single();
      Expect("the parent", y.Parent.Id == root.Id && root.Parent == null);
      Expect("kinds", root.Kind() == NodeKind.Plain && y.Kind() == NodeKind.Axis && y.IsAxis && !root.IsAxis);
      Expect("the axis", y.Axis().Value.Type == AxisType.Y && root.Axis() == null);
      y.MoveTo(-14.5);
      Expect("moved", y.Value == -14.5 && y.Matrix()[10] == -14.5 && machine.AxisPosition(2) == -14.5);
      NodeState kept = y.State;
      y.Value = 7;
      Expect("a value without its transform", y.Matrix()[10] == -14.5 && y.Value == 7);
      machine.Restore(new[] { kept });
      Expect("restored", y.Value == -14.5);
      y.Flags = 3;
      Expect("flags", y.Flags == 3);
      root.Initialise(false);
      Expect("the root alone", y.Value == -14.5);
      root.Initialise(true);
      Expect("all below it", y.Value == 0);
      machine.PlaceTool(new Point(0, 6, 200));
      Expect("reached", machine.Pose(new Point(30, 20, 50), new Point()));
      Expect("the slides", Near(machine.AxisPosition(2), 26) && Near(machine.AxisPosition(3), -270));
      Expect("read back", Near(machine.ReadCoordinates()[2], 50));
    }
  }

  static void Copies(string file, string folder) {
    Machine copy;
    using (Machine machine = Machine.Load(file)) copy = machine.Clone();
    Expect("a copy lives on", copy.IsValid());
    copy.Save(folder + "/räder.k5m");
    Expect("a name that is not ASCII", File.Exists(folder + "/räder.k5m"));
    Expect("turned", copy.Orientate(Math.PI / 2, 0) && Near(copy.Secondary.Value.Vector.Y, 1));
    copy.Dispose();
    using (Machine loaded = Machine.Load(folder + "/räder.k5m"))
      Expect("what was saved", loaded.Secondary.Value.Vector.Z == 1);
  }

  // ---- what is refused ----

  static void Refusals(string file, string folder) {
    Throws<MachineFileException>("a file that is not there", () => Machine.Load(folder + "/nowhere.k5m"));
    Throws<ArgumentNullException>("no file", () => Machine.Load(null));
    Throws<ArgumentException>("a character 0", () => Machine.Load(file + "\0.k5m"));
    var machine = Machine.Load(file);
    Throws<MachineFileException>("a folder that is not there", () => machine.Save(folder + "/gone/x.k5m"));
    Throws<ArgumentOutOfRangeException>("a third tree", () => machine.Tree(2));
    Throws<ArgumentNullException>("no states", () => machine.Restore(null));

    Node root = machine.Tree(0);
    machine.Dispose();
    machine.Dispose();
    Throws<ObjectDisposedException>("a machine after it was freed", () => machine.ReadCoordinates());
    Throws<ObjectDisposedException>("its head", () => machine.Head.ToString());
    Throws<ObjectDisposedException>("a node of it", () => root.Id.ToString());
    Throws<ObjectDisposedException>("its children", () => root.Children.ToString());
  }

  // ---- the garbage collector ----

  static void NodesKeepTheirMachine(string file) {
    Node root = null;
    OnAThread(() => root = Machine.Load(file).Tree(0));
    Collect();
    Expect("a node keeps its machine", root.Id == 10 && root.Children.Single().Id == 2);
  }

  // The collector frees what was dropped, and waits for the pools: while they are taken it does not end.
  static void DroppedMachinesAreFreed(string file) {
    OnAThread(() => {
      for (int i = 0; i < 50; ++i) Machine.Load(file);
    });
    var freed = new ManualResetEvent(false);
    var collector = new Thread(() => {
      Collect();
      freed.Set();
    });
    lock (Native.Pools) {
      collector.Start();
      Expect("the collector waits for the pools", !freed.WaitOne(300));
    }
    collector.Join();
    Expect("and then frees", freed.WaitOne(0));
  }

  static IEnumerable<IntPtr> Addresses(Machine machine) {
    var nodes = new IntPtr[5];
    Native.k5axSgNode_all_nodes(Native.k5axCMachDef_SG(machine.Handle, 0), nodes);
    return nodes;
  }

  // The pools hand out first what came back last.
  static void DisposeGivesBack(string file) {
    IntPtr[] freed;
    using (Machine machine = Machine.Load(file)) freed = Addresses(machine).ToArray();
    using (Machine machine = Machine.Load(file))
      Expect("nodes that were given back are used again", Addresses(machine).Intersect(freed).Any());
  }

  static void MachinesComeAndGo(string file) {
    int valid = 0;
    for (int i = 0; i < 2000; ++i) {
      if (Machine.Load(file).IsValid()) ++valid;
      if (i % 100 == 0) GC.Collect();
    }
    Collect();
    Expect("machines that nobody frees", valid == 2000);
  }

  // ---- callbacks ----

  static void InstallAndForget(List<string> heard) {
    Diagnostics.OnFeedback(text => heard.Add(text));
    Diagnostics.OnError((text, code) => heard.Add(text + code));
    Diagnostics.OnAssertion((a, b, c, line) => heard.Add(a + b + c + line));
  }

  static void CallbacksOutliveACollection() {
    var heard = new List<string>();
    OnAThread(() => InstallAndForget(heard));
    Collect();
    for (int i = 0; i < 100000; ++i) GC.KeepAlive(new object[4]);
    Collect();
    Diagnostics.SendFeedback("grüße");
    Diagnostics.SendError("e", 70000);  // the low 16 bits: 70000 - 65536
    Diagnostics.SendAssertion("a", "b", "c", 12);
    Expect("all three channels", heard.SequenceEqual(new[] { "grüße", "e4464", "abc12" }));

    Diagnostics.OnFeedback(null);
    Diagnostics.OnError(null);
    Diagnostics.OnAssertion(null);
    Diagnostics.SendFeedback("x");
    Diagnostics.SendError("x", 1);
    Diagnostics.SendAssertion("x", "x", "x", 1);
    Expect("nothing after uninstalling", heard.Count == 3);
  }

  static void ACallbackMayThrow() {
    Diagnostics.OnFeedback(text => { throw new InvalidOperationException(text); });
    Throws<InvalidOperationException>("what a sink throws", () => Diagnostics.SendFeedback("x"));
    Diagnostics.OnFeedback(null);
    Diagnostics.SendFeedback("and it is thrown once");
  }

  static int Main(string[] args) {
    string file = args[0];
    string folder = args[1];
    Answers(file);
    Nodes(file);
    Copies(file, folder);
    Refusals(file, folder);
    NodesKeepTheirMachine(file);
    DroppedMachinesAreFreed(file);
    DisposeGivesBack(file);
    MachinesComeAndGo(file);
    CallbacksOutliveACollection();
    ACallbackMayThrow();
    Console.WriteLine("{0} as expected, {1} not", met, failed);
    return failed == 0 && met > 0 ? 0 : 1;
  }
}
