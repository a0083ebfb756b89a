{ face MACHINE FOLDER: calls every function of the binding, and prints what comes out; see face.c. }
program face;

{$IFDEF FPC}{$MODE DELPHI}{$CODEPAGE UTF8}{$ENDIF}

uses
  SysUtils, Math, k5ax, k5axbridge, numbers;

const
  Gruesse: UTF8String = 'grüße';

{ ---- text ---- }

procedure Line(const FunctionName: string; const Values: array of Double);
begin
  WriteLn(FunctionName, ':', Text(Values));
end;

procedure PrintHead(const FunctionName: string; const Head: TAngledHead);
begin
  WriteLn(FunctionName, ':', Text([Head.b_angle, Head.c_angle, Head.length1, Head.length2]),
    PointText(Head.tip), PointText(Head.tool_dir), PointText(Head.ref_dir), PointText(Head.offset), ' ',
    Head.flags);
end;

procedure PrintAxis(const FunctionName: string; const Axis: TAxis);
begin
  WriteLn(FunctionName, ':', PointText(Axis.base), PointText(Axis.vector), ' ', Axis.&type, ' ',
    Axis.location, Text([Axis.min, Axis.max]), ' ', Axis.mode);
end;

function There(P: Pointer): string;
begin
  Result := 'there';
  if P = nil then
    Result := 'null';
end;

function Bit(Answer: ByteBool): string;
begin
  Result := '0';
  if Answer then
    Result := '1';
end;

{ ---- layout ---- }

{ The address of a field, where its record stands at address 0. }
function Place(Field: Pointer): string;
begin
  Result := ' ' + IntToStr(PtrInt(Field));
end;

procedure Layout;
const
  Point: ^Tk5ax_point = nil;
  Axis: PAxis = nil;
  Head: PAngledHead = nil;
  State: PNodeState = nil;
begin
  WriteLn('k5ax_point ', SizeOf(Point^), ':', Place(@Point.x), Place(@Point.y), Place(@Point.z));
  WriteLn('TAxis ', SizeOf(Axis^), ':', Place(@Axis.base), Place(@Axis.vector), Place(@Axis.&type),
    Place(@Axis.location), Place(@Axis.min), Place(@Axis.max), Place(@Axis.mode));
  WriteLn('angled_head ', SizeOf(Head^), ':', Place(@Head.b_angle), Place(@Head.c_angle),
    Place(@Head.length1), Place(@Head.length2), Place(@Head.tip), Place(@Head.tool_dir),
    Place(@Head.ref_dir), Place(@Head.offset), Place(@Head.flags));
  WriteLn('node_state ', SizeOf(State^), ':', Place(@State.id), Place(@State.flags), Place(@State.value));
  WriteLn('AXIS_TYPE ', SizeOf(TAxisType), ': ', AXIS_TYPE_INVALID_LOWEST, ' ', AXIS_A, ' ', AXIS_B, ' ',
    AXIS_C, ' ', AXIS_X, ' ', AXIS_Y, ' ', AXIS_Z, ' ', AXIS_DUMMY, ' ', AXIS_TYPE_INVALID_HIGHEST);
  WriteLn('AXIS_MODE ', SizeOf(TAxisMode), ': ', AXIS_MODE_INVALID_LOWEST, ' ', ROTARY, ' ', LINEAR, ' ',
    AXIS_MODE_INVALID_HIGHEST);
  WriteLn('AXIS_LOCATION ', SizeOf(TAxisLocation), ': ', AXIS_LOCATION_INVALID_LOWEST, ' ', k5ax.HEAD, ' ',
    TABLE, ' ', AXIS_LOCATION_INVALID_HIGHEST);
  WriteLn('MACHINE_TYPE ', SizeOf(TMachineType), ': ', MC_UNDEFINED, ' ', MC_TT, ' ', MC_HT, ' ', MC_HH);
end;

{ ---- the functions ---- }

procedure Process;
begin
  Write('md_flags_get: ', md_flags_get);
  md_flags_set($FFFFFFF5);
  WriteLn(' ', md_flags_get);
  Write('md_regression: ', md_regression);
  md_flags_set(2);
  WriteLn(' ', md_regression);
  md_flags_set(0);
  WriteLn('md_flags_set: ', md_flags_get);
  Line('k5ax_R2D', [k5ax_R2D]);
  Line('k5ax_D2R', [k5ax_D2R]);
  Line('k5ax_normalise_angle', [k5ax_normalise_angle(-1, 1), k5ax_normalise_angle(4, 2)]);
end;

procedure Heads;
const
  Lengths: array[0..1] of Double = (4, 2);
var
  One, Other: TAngledHead;
  Straight: Integer;
begin
  FillChar(One, SizeOf(One), $55);
  k5ax_angled_head_initialise(@One);
  PrintHead('k5ax_angled_head_initialise', One);
  Straight := k5ax_is_angled_head(@One);

  k5ax_angled_head_set(90, 30, @Lengths, 1, @One);
  PrintHead('k5ax_angled_head_set', One);
  k5ax_angled_head_flags_set(@One, $80000003);
  WriteLn('k5ax_angled_head_flags_set: ', One.flags);
  WriteLn('k5ax_angled_head_flags_get: ', k5ax_angled_head_flags_get(@One));
  WriteLn('k5ax_is_angled_head: ', Straight, ' ', k5ax_is_angled_head(@One), ' ', k5ax_is_angled_head(nil));

  k5ax_angled_head_copy(@Other, @One);
  PrintHead('k5ax_angled_head_copy', Other);
  Other.offset.x := 1;
  Other.offset.y := 2;
  Other.offset.z := 3;
  k5ax_angled_head_scale(@Other, 2);
  PrintHead('k5ax_angled_head_scale', Other);
end;

procedure AxisRecords;
var
  Axis, Other: TAxis;
  Clone: PAxis;
  Limits: PDouble;
  Triple: array[0..2] of Double;
  Six: array[0..5] of Double;
  I: Integer;

  function Pick(Letter: TAxisType): PDouble;
  begin
    Result := AXIS_TYPE_val_get(Letter, @Six[0], @Six[1], @Six[2], @Six[3], @Six[4], @Six[5]);
  end;

begin
  FillChar(Axis, SizeOf(Axis), 0);
  Axis.base.x := 1;
  Axis.base.y := 2;
  Axis.base.z := 3;
  Axis.vector.y := 1;
  Axis.&type := AXIS_B;
  Axis.location := TABLE;
  Axis.min := -2;
  Axis.max := 3;
  Axis.mode := LINEAR;
  WriteLn('axis_location: ', axis_location(@Axis));
  Limits := axis_limits(@Axis);
  Line('axis_limits', [Limits[0], Limits[1]]);
  Line('axis_get_value', [axis_get_value(@Axis, 7, 8, 9)]);
  FillChar(Triple, SizeOf(Triple), 0);
  Write('axis_set_value: ', axis_set_value(@Axis, 5, @Triple[0], @Triple[1], @Triple[2]));
  WriteLn(Text(Triple));

  Clone := axis_clone(@Axis);
  PrintAxis('axis_clone', Clone^);
  FillChar(Other, SizeOf(Other), 0);
  WriteLn('axis_copy: ', axis_copy(@Other, Clone));
  PrintAxis('axis_copy', Other);
  Write('axis_free: ', axis_free(@Clone));
  WriteLn(' ', There(Clone));

  for I := 0 to 5 do
    Six[I] := I + 1;
  WriteLn('AXIS_TYPE_val_get:', Text([Pick(AXIS_B)^, Pick(AXIS_Z)^]), ' ', There(Pick(AXIS_DUMMY)));
end;

procedure Make(Machine: Pk5ax_machdef; const FileName: string);
begin
  WriteLn('k5axCMachDef_create: ', k5axCMachDef_type(Machine));
  Write('MachdefLoad: ', MachdefLoad(Machine, 'nowhere.k5m'));
  WriteLn(' ', MachdefLoad(Machine, PAnsiChar(UTF8String(FileName))));
  WriteLn('k5axCMachDef_type: ', k5axCMachDef_type(Machine));
  WriteLn('k5axCMachDef_mode: ', k5axCMachDef_mode(Machine));
  WriteLn('k5axCMachDef_discipline: ', k5axCMachDef_discipline(Machine));
  WriteLn('k5axCMachDef_flags_get: ', k5axCMachDef_flags_get(Machine));
  k5axCMachDef_flags_set(Machine, $80000004);
  WriteLn('k5axCMachDef_flags_set: ', k5axCMachDef_flags_get(Machine));
  k5axCMachDef_flags_set(Machine, 0);
end;

procedure Parts(Machine: Pk5ax_machdef);
begin
  k5axCMachDef_head(Machine).length1 := 7;
  Line('k5axCMachDef_head', [k5axCMachDef_head_const(Machine).length1]);
  k5axCMachDef_head(Machine).length1 := 0;
  WriteLn('k5axCMachDef_head_const:', PointText(k5axCMachDef_head_const(Machine).tool_dir));

  PrintAxis('k5axCMachDef_axis', k5axCMachDef_axis(0, Machine)^);
  WriteLn('k5axCMachDef_axis: ', k5axCMachDef_axis(1, Machine).&type, ' ',
    There(k5axCMachDef_axis(2, Machine)));
  PrintAxis('k5axCMachDef_rotary_axis', k5axCMachDef_rotary_axis(Machine)^);
  PrintAxis('k5axCMachDef_rotary_axis_const', k5axCMachDef_rotary_axis_const(Machine)^);
  WriteLn('k5axCMachDef_SG: ', k5axSgNode_id(k5axCMachDef_SG(Machine, 0)), ' ',
    k5axSgNode_id(k5axCMachDef_SG(Machine, 1)));
  WriteLn('k5axCMachDef_Tool: ', There(k5axCMachDef_Tool(Machine)));
end;

function TypeAndTree(Machine: Pk5ax_machdef): string;
begin
  Result := IntToStr(k5axCMachDef_type(Machine)) + ' ' + There(k5axCMachDef_SG(Machine, 0));
end;

procedure FillCopy(Copy, Machine: Pk5ax_machdef; const Folder: UTF8String);
var
  Before: ByteBool;
begin
  k5axCMachDef_clone_ex(Copy, Machine, 1);
  Write('k5axCMachDef_clone_ex: ', TypeAndTree(Copy));
  k5axCMachDef_clone_ex(Copy, Machine, 2);
  WriteLn(' ', TypeAndTree(Copy));
  k5axCMachDef_clone(Copy, Machine);
  WriteLn('k5axCMachDef_clone: ', TypeAndTree(Copy));

  Before := k5axCMachDef_orthogonal(Copy);
  Write('k5axCMachDef_orientate: ', Bit(k5axCMachDef_orientate(Copy, 90 * k5ax_D2R, 0)));
  WriteLn(PointText(k5axCMachDef_axis(1, Copy).vector));
  WriteLn('k5axCMachDef_orthogonal: ', Bit(Before), ' ', Bit(k5axCMachDef_orthogonal(Copy)));

  Write('MachdefSave: ', MachdefSave(Machine, PAnsiChar(Folder + '/gone/' + Gruesse + '.k5m')));
  Write(' ', MachdefSave(Machine, PAnsiChar(Folder + '/' + Gruesse + '.k5m')));
  WriteLn(' ', MachdefLoad(Copy, PAnsiChar(Folder + '/' + Gruesse + '.k5m')));
end;

procedure Copies(Machine: Pk5ax_machdef; const Folder: string);
var
  Copy: Pk5ax_machdef;
begin
  Copy := k5axCMachDef_create;
  try
    FillCopy(Copy, Machine, UTF8String(Folder));
  finally
    k5axCMachDef_free(@Copy);
  end;
  WriteLn('k5axCMachDef_free: done');
end;

procedure AskNodes(Root, Y: Pk5ax_node);
var
  All: array[0..4] of Pk5ax_node;
  Node: Pk5ax_node;
begin
  WriteLn('k5axSgNode_child_count: ', k5axSgNode_child_count(Root));
  WriteLn('k5axSgNode_child: ', k5axSgNode_id(Y));
  WriteLn('k5axSgNode_parent: ', k5axSgNode_id(k5axSgNode_parent(Y)), ' ', There(k5axSgNode_parent(Root)));
  WriteLn('k5axSgNode_all_nodes: ', k5axSgNode_all_nodes(Root, @All));
  Write('k5axSgNode_id:');
  for Node in All do
    Write(' ', k5axSgNode_id(Node));
  WriteLn;
  WriteLn('k5axSgNode_NodeAxis_cast: ', There(k5axSgNode_NodeAxis_cast(Root)), ' ',
    There(k5axSgNode_NodeAxis_cast(Y)));
  WriteLn('k5axSgNode_calc_flags: ', k5axSgNode_calc_flags(0, 7), ' ', k5axSgNode_calc_flags(7, 0), ' ',
    k5axSgNode_calc_flags(7, 7));
end;

procedure ChangeNodes(Machine: Pk5ax_machdef; Root, Y: Pk5ax_node);
var
  All: array[0..4] of Pk5ax_node;
  Matrix: array[0..11] of Double;
  State: TNodeState;
  Kept: Double;
begin
  WriteLn('k5axSgNode_flags_get: ', k5axSgNode_flags_get(Y));
  k5axSgNode_flags_set(Y, $FFFFFFFF);
  WriteLn('k5axSgNode_flags_set: ', k5axSgNode_flags_get(Y));
  k5axSgNode_flags_set(Y, 1);
  k5axSgNode_value_set(Y, 7);
  k5ax_bridge_node_matrix(Y, @Matrix);
  Line('k5axSgNode_value_set', [Matrix[10]]);
  Line('k5axSgNode_value_get', [k5axSgNode_value_get(Y)]);
  k5axSgNode_value_set2(k5axCMachDef_flags_get(Machine), Y, -14.5);
  k5ax_bridge_node_matrix(Y, @Matrix);
  Line('k5axSgNode_value_set2', [Matrix[10]]);
  k5axSgNode_state_get_(Y, @State);
  WriteLn('k5axSgNode_state_get_: ', State.id, ' ', State.flags, Text([State.value]));

  k5axSgNode_all_nodes(Root, @All);
  WriteLn('k5ax_bridge_node_kind: ', k5ax_bridge_node_kind(Root), ' ', k5ax_bridge_node_kind(Y), ' ',
    k5ax_bridge_node_kind(All[4]), ' ', k5ax_bridge_node_kind(nil));
  Line('k5ax_bridge_node_matrix', Matrix);
  PrintAxis('k5ax_bridge_node_axis', k5ax_bridge_node_axis(Y)^);
  WriteLn('k5ax_bridge_node_axis: ', There(k5ax_bridge_node_axis(Root)));

  k5axSgNode_initialise(Root, 0);
  Kept := k5axSgNode_value_get(Y);
  k5axSgNode_initialise(Root, 1);
  Line('k5axSgNode_initialise', [Kept, k5axSgNode_value_get(Y)]);
end;

procedure Nodes(Machine: Pk5ax_machdef);
var
  Root: Pk5ax_node;
begin
  Root := k5axCMachDef_SG(Machine, 0);
  AskNodes(Root, k5axSgNode_child(Root, 0));
  ChangeNodes(Machine, Root, k5axSgNode_child(Root, 0));
end;

procedure ZeroTable(Machine: Pk5ax_machdef);
var
  Tree: array[0..6] of Pk5ax_node;
begin
  k5axSgNode_all_nodes(k5axCMachDef_SG(Machine, 1), @Tree);
  k5axSgNode_value_set2(0, Tree[2], 0);
  k5axSgNode_value_set2(0, Tree[4], 0);
end;

function At(Machine: Pk5ax_machdef; Id: Integer): Double;
begin
  Result := CMachDef_Axis_Position_Get(Machine, Id);
end;

procedure Pose(Machine: Pk5ax_machdef; A, C: Double);
const
  Wanted: array[0..5] of Double = (1, 2, 3, 0, 0, 0);
  States: array[0..1] of TNodeState = ((id: 2; flags: 1; value: 12), (id: 3; flags: 1; value: -34));
var
  Back: array[0..5] of Double;
begin
  Write('UpdateNodeAxes_2: ', Bit(UpdateNodeAxes_2(Machine, Infinity, 20, 50, A, 0, C)));
  ZeroTable(Machine);
  WriteLn(' ', Bit(UpdateNodeAxes_2(Machine, 30, 20, 50, A, 0, C)));
  Line('CMachDef_Axis_Position_Get', [At(Machine, 3), At(Machine, 99)]);
  k5axCMachDef_SG2MachCoords(Machine, @Back);
  Line('k5axCMachDef_SG2MachCoords', Back);

  ZeroTable(Machine);
  Write('k5axCMachDef_MachCoords2SG: ', k5axCMachDef_MachCoords2SG(Machine, @Wanted));
  WriteLn(Text([At(Machine, 1), At(Machine, 2), At(Machine, 3)]));

  Write('CMachDef_IdAxisState_set2: ', CMachDef_IdAxisState_set2(Machine, @States, 0));
  Write(' ', CMachDef_IdAxisState_set2(Machine, @States, 2));
  WriteLn(Text([At(Machine, 2), At(Machine, 3)]));

  CMachDef_ToolNode_matrix_SetXYZ(Machine, 0, 6, 200);
  UpdateNodeAxes_2(Machine, 30, 20, 50, 0, 0, 0);
  Line('CMachDef_ToolNode_matrix_SetXYZ', [At(Machine, 2), At(Machine, 3)]);
end;

procedure Points(Machine: Pk5ax_machdef; A, C: Double);
const
  Point: array[0..2] of Double = (0, 3, 5);
  Zero: array[0..2] of Double = (0, 0, 0);
  Part: array[0..2] of Double = (30, 20, 50);
var
  Wrapped: array[0..6] of Double;
  Abc, Mach: array[0..2] of Double;
  Again: array[0..5] of Double;
begin
  Cartesian2AxialRotaryVals_c(Machine, @Point, @Zero, 0, 1, @Wrapped[0], @Wrapped[3], @Wrapped[6]);
  Line('Cartesian2AxialRotaryVals_c', Wrapped);

  Abc[0] := A;
  Abc[1] := 0;
  Abc[2] := C;
  k5ax_bridge_part_to_machine(Machine, @Part, @Abc, @Mach);
  Line('k5ax_bridge_part_to_machine', Mach);
  k5ax_bridge_machine_to_part(Machine, @Mach, @Abc, @Again[0], @Again[3]);
  Line('k5ax_bridge_machine_to_part', Again);
end;

{ ---- the channels ---- }

function Bytes(Text: PAnsiChar): string;
begin
  Result := '';
  while Text^ <> #0 do
  begin
    Result := Result + ' ' + LowerCase(IntToHex(Ord(Text^), 2));
    Inc(Text);
  end;
end;

procedure HearText(Text: PAnsiChar; Data: Pointer); cdecl;
begin
  WriteLn('k5ax_bridge_feedback:', Bytes(Text), ' ', PtrInt(Data));
end;

procedure HearError(Text: PAnsiChar; Code: Integer; Data: Pointer); cdecl;
begin
  WriteLn('k5ax_bridge_error:', Bytes(Text), ' ', Code, ' ', PtrInt(Data));
end;

procedure HearAssertion(A, B, C: PAnsiChar; Line: Integer; Data: Pointer); cdecl;
begin
  WriteLn('k5ax_bridge_assertion_failed:', Bytes(A), Bytes(B), Bytes(C), ' ', Line, ' ', PtrInt(Data));
end;

procedure Speak;
begin
  k5ax_bridge_feedback(PAnsiChar(Gruesse));
  k5ax_bridge_error('e', 70000);
  k5ax_bridge_assertion_failed('a', 'b', 'c', 12);
end;

procedure Channels(Machine: Pk5ax_machdef);
var
  Empty: Pk5ax_machdef;
begin
  Empty := k5axCMachDef_create;
  WriteLn('k5ax_bridge_is_valid: ', k5ax_bridge_is_valid(Machine), ' ', k5ax_bridge_is_valid(Empty));
  k5axCMachDef_free(@Empty);

  k5ax_bridge_on_feedback(HearText, Pointer(71));
  k5ax_bridge_on_error(HearError, Pointer(72));
  k5ax_bridge_on_assertion(HearAssertion, Pointer(73));
  Speak;
  k5ax_bridge_on_feedback(nil, nil);
  k5ax_bridge_on_error(nil, nil);
  k5ax_bridge_on_assertion(nil, nil);
  Speak;
  WriteLn('k5ax_bridge_on_feedback, k5ax_bridge_on_error, k5ax_bridge_on_assertion: quiet');
end;

var
  Machine: Pk5ax_machdef;

begin
  if ParamCount <> 2 then
  begin
    WriteLn(ErrOutput, 'usage: face MACHINE FOLDER');
    Halt(2);
  end;
  Layout;
  Process;
  Heads;
  AxisRecords;
  Machine := k5axCMachDef_create;
  try
    Make(Machine, ParamStr(1));
    Parts(Machine);
    Copies(Machine, ParamStr(2));
    Nodes(Machine);
    Pose(Machine, -40 * k5ax_D2R, 90 * k5ax_D2R);
    Points(Machine, -40 * k5ax_D2R, 90 * k5ax_D2R);
    Channels(Machine);
  finally
    k5axCMachDef_free(@Machine);
  end;
end.
