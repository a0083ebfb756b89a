{ tour MACHINE TOOLPATH: loads a machine, validates it, carries a tool path from the part to the machine,
  poses the machine for every row, and shows both trees as the last row leaves them.

  The same program stands in ../c and ../csharp, and all three print the same. Exit status: 0 when all is
  well; 1 when a position cannot be reached; 2 when an input cannot be used, with one line that says why. }
program tour;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$IFDEF MSWINDOWS}{$APPTYPE CONSOLE}{$ENDIF}

uses
  SysUtils, Classes, Math, k5ax, k5axbridge, numbers;

const
  Header = 'x,y,z,a,b,c';
  Developer = 2;
  LongestLine = 255; { the program in C has no room for more }
  Tolerance = 1e-9; { of what is read back, relative to the largest coordinate }

type
  TTriple = array[0..2] of Double;
  TMatrix = array[0..11] of Double;

  TRow = record
    Line: Integer;
    Part: TTriple;
    Abc: TTriple; { radians }
  end;
  TRows = array of TRow;

  EInput = class(Exception);

const
  Identity: TMatrix = (1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0);

{ ---- the tool path ---- }

{ A decimal number and nothing else: TryStrToFloat alone would take 'nan' and spaces as well. }
function ReadNumber(const Text: string; out Value: Double): Boolean;
var
  Sign: Char;
begin
  Result := False;
  for Sign in Text do
    if Pos(Sign, '+-.0123456789eE') = 0 then
      Exit;
  Result := TryStrToFloat(Text, Value, PointAsDecimal) and not IsNan(Value) and not IsInfinite(Value);
end;

function ReadRow(const Text: string; out Row: TRow): Boolean;
var
  Values: array[0..5] of Double;
  Rest: string;
  I, Comma: Integer;
begin
  Result := False;
  Rest := Text + ',';
  for I := 0 to 5 do
  begin
    Comma := Pos(',', Rest);
    if (Comma = 0) or not ReadNumber(Copy(Rest, 1, Comma - 1), Values[I]) then
      Exit;
    Delete(Rest, 1, Comma);
  end;
  for I := 0 to 2 do
  begin
    Row.Part[I] := Values[I];
    Row.Abc[I] := Values[3 + I] * k5ax_D2R;
  end;
  Result := (Rest = '') and (Length(Text) < LongestLine);
end;

function ReadRows(Lines: TStrings; const FileName: string): TRows;
var
  I: Integer;
begin
  Result := nil;
  if (Lines.Count = 0) or (Lines[0] <> Header) then
    raise EInput.Create(FileName + ':1: not the header; begin with the line ' + Header);
  if Lines.Count = 1 then
    raise EInput.Create(FileName + ':2: no positions; write a row below the header');

  SetLength(Result, Lines.Count - 1);
  for I := 1 to Lines.Count - 1 do
  begin
    if not ReadRow(Lines[I], Result[I - 1]) then
      raise EInput.Create(FileName + ':' + IntToStr(I + 1) + ': not six numbers; write ' + Header);
    Result[I - 1].Line := I + 1;
  end;
end;

function ReadToolpath(const FileName: string): TRows;
var
  Lines: TStringList;
begin
  Lines := TStringList.Create;
  try
    try
      Lines.LoadFromFile(FileName);
    except
      on EStreamError do
        raise EInput.Create(FileName + ': cannot be opened; give a tool path that is there');
    end;
    Result := ReadRows(Lines, FileName);
  finally
    Lines.Free;
  end;
end;

{ ---- the machine ---- }

{ [snippet heard] }
procedure KeepText(Text: PAnsiChar; Data: Pointer); cdecl;
begin
  PUTF8String(Data)^ := Text;
end;

{ The library says why a machine is not valid only to a developer, and not for every reason. }
procedure Validate(Machine: Pk5ax_machdef; const FileName: string);
var
  Heard: UTF8String;
  Valid: Boolean;
begin
  Heard := 'k5ax check says why';
  md_flags_set(md_flags_get or Developer);
  k5ax_bridge_on_feedback(KeepText, @Heard);
  try
    Valid := k5ax_bridge_is_valid(Machine) = 1;
  finally
    k5ax_bridge_on_feedback(nil, nil);
    md_flags_set(md_flags_get and not Developer);
  end;
  if not Valid then
    raise EInput.Create(FileName + ': not a valid machine: ' + string(Heard));
end;
{ [end] }

procedure Load(Machine: Pk5ax_machdef; const FileName: string);
begin
  if MachdefLoad(Machine, PAnsiChar(UTF8String(FileName))) = 0 then
    raise EInput.Create(FileName + ': not there, damaged, or no machine definition; k5ax check says which');
  Validate(Machine, FileName);
  if (k5axCMachDef_SG(Machine, 0) = nil) or (k5axCMachDef_SG(Machine, 1) = nil) then
    raise EInput.Create(FileName + ': no scene graph; save the machine with both trees');
end;

{ ---- text ---- }

function Letter(Axis: PAxis): Char;
const
  Letters: array[AXIS_A..AXIS_Z] of Char = ('A', 'B', 'C', 'X', 'Y', 'Z');
begin
  if (Axis.&type >= AXIS_A) and (Axis.&type <= AXIS_Z) then
    Result := Letters[Axis.&type]
  else
    Result := '?';
end;

procedure PrintAxis(const Role: string; Axis: PAxis);
const
  Carrier: array[Boolean] of string = ('head', 'table');
begin
  if Axis = nil then
    Exit;
  WriteLn(Role, ' ', Letter(Axis), ' ', Carrier[axis_location(Axis) = TABLE], ' through',
    PointText(Axis.base), ' along', PointText(Axis.vector), ' travel',
    Text([Axis.min * k5ax_R2D, Axis.max * k5ax_R2D]));
end;

procedure PrintMachine(Machine: Pk5ax_machdef);
const
  Types: array[MC_TT..MC_HH] of string = ('table-table', 'head-table', 'head-head');
  Axes: array[Boolean] of string = ('skew', 'orthogonal');
  Heads: array[Boolean] of string = ('straight', 'angled');
begin
  WriteLn(Types[k5axCMachDef_type(Machine)], ', ', Axes[Boolean(k5axCMachDef_orthogonal(Machine))], ' axes, ',
    Heads[k5ax_is_angled_head(k5axCMachDef_head_const(Machine)) = 1], ' head');
  PrintAxis('primary', k5axCMachDef_axis(0, Machine));
  PrintAxis('secondary', k5axCMachDef_axis(1, Machine));
end;

{ ---- the trees ---- }

{ A before B, as the points see it: both have three rows for directions and one for the origin. }
function Multiply(const A, B: TMatrix): TMatrix;
var
  Row, Column, I: Integer;
  Sum: Double;
begin
  for Row := 0 to 3 do
    for Column := 0 to 2 do
    begin
      Sum := 0;
      if Row = 3 then
        Sum := B[9 + Column];
      for I := 0 to 2 do
        Sum := Sum + A[3 * Row + I] * B[3 * I + Column];
      Result[3 * Row + Column] := Sum;
    end;
end;

function WhatItIs(Machine: Pk5ax_machdef; Node: Pk5ax_node): string;
var
  Axis: PAxis;
  Value: Double;
begin
  Axis := k5ax_bridge_node_axis(Node);
  if Axis = nil then
  begin
    Result := ' plain';
    if k5ax_bridge_node_kind(Node) = 2 then
      Result := ' tool';
    Exit;
  end;
  Value := CMachDef_Axis_Position_Get(Machine, k5axSgNode_id(Node));
  if Axis.mode = ROTARY then
    Value := Value * k5ax_R2D;
  Result := ' axis ' + Letter(Axis) + ' at' + Text([Value]);
end;

procedure PrintNode(Machine: Pk5ax_machdef; Node: Pk5ax_node; const ParentToRoot: TMatrix);
var
  NodeToParent, NodeToRoot: TMatrix;
  I, Count: Integer;
begin
  k5ax_bridge_node_matrix(Node, @NodeToParent);
  NodeToRoot := Multiply(NodeToParent, ParentToRoot);
  Count := k5axSgNode_child_count(Node);
  WriteLn('node ', k5axSgNode_id(Node), WhatItIs(Machine, Node), ', ', Count, ' below:', Text(NodeToRoot));
  for I := 0 to Count - 1 do
    PrintNode(Machine, k5axSgNode_child(Node, I), NodeToRoot);
end;

procedure PrintTrees(Machine: Pk5ax_machdef);
var
  Tree: Integer;
begin
  for Tree := 0 to 1 do
  begin
    WriteLn('tree ', Tree);
    PrintNode(Machine, k5axCMachDef_SG(Machine, Tree), Identity);
  end;
end;

{ Brings the rotary axes below a node to their zero pose. }
procedure ZeroRotaryAxes(Machine: Pk5ax_machdef; Node: Pk5ax_node);
var
  Axis: PAxis;
  I: Integer;
begin
  Axis := k5ax_bridge_node_axis(Node);
  if (Axis <> nil) and (Axis.mode = ROTARY) then
    k5axSgNode_value_set2(k5axCMachDef_flags_get(Machine), Node, 0);
  for I := 0 to k5axSgNode_child_count(Node) - 1 do
    ZeroRotaryAxes(Machine, k5axSgNode_child(Node, I));
end;

{ The update measures the tool point before it turns the table, so the table, which is in tree 1, is brought
  to its zero pose first. }
function Pose(Machine: Pk5ax_machdef; const Xyz, Abc: TTriple): Boolean;
begin
  ZeroRotaryAxes(Machine, k5axCMachDef_SG(Machine, 1));
  Result := UpdateNodeAxes_2(Machine, Xyz[0], Xyz[1], Xyz[2], Abc[0], Abc[1], Abc[2]);
end;

{ ---- the path ---- }

function IsReadBack(Machine: Pk5ax_machdef; const Xyz, Abc: TTriple): Boolean;
var
  Back: array[0..5] of Double;
  Scale, Worst: Double;
  I: Integer;
begin
  k5axCMachDef_SG2MachCoords(Machine, @Back);
  Scale := 1;
  Worst := 0;
  for I := 0 to 2 do
  begin
    Scale := Max(Scale, Abs(Xyz[I]));
    Worst := Max(Worst, Max(Abs(Back[I] - Xyz[I]), Abs(Back[3 + I] - Abc[I])));
  end;
  Result := Worst <= Tolerance * Scale;
end;

function RunPath(Machine: Pk5ax_machdef; const Rows: TRows): Integer;
var
  Row: TRow;
  Xyz: TTriple;
  Reached, ReadBack: Integer;
begin
  Reached := 0;
  ReadBack := 0;
  for Row in Rows do
  begin
    k5ax_bridge_part_to_machine(Machine, @Row.Part, @Row.Abc, @Xyz);
    if Pose(Machine, Xyz, Row.Abc) then
      Inc(Reached);
    if IsReadBack(Machine, Xyz, Row.Abc) then
      Inc(ReadBack);
    WriteLn('row ', Row.Line, ':', Text(Xyz));
  end;
  WriteLn(Length(Rows), ' rows, ', Reached, ' reached, ', ReadBack, ' read back');
  Result := 1;
  if (Reached = Length(Rows)) and (ReadBack = Length(Rows)) then
    Result := 0;
end;

function Run(const MachineFile, PathFile: string): Integer;
var
  Machine: Pk5ax_machdef;
  Rows: TRows;
begin
  Machine := k5axCMachDef_create;
  try
    Load(Machine, MachineFile);
    Rows := ReadToolpath(PathFile);
    PrintMachine(Machine);
    Result := RunPath(Machine, Rows);
    PrintTrees(Machine);
  finally
    k5axCMachDef_free(@Machine);
  end;
end;

begin
  if ParamCount <> 2 then
  begin
    WriteLn(ErrOutput, 'usage: tour MACHINE TOOLPATH');
    Halt(2);
  end;
  try
    ExitCode := Run(ParamStr(1), ParamStr(2));
  except
    on E: EInput do
    begin
      WriteLn(ErrOutput, 'tour: ', E.Message);
      ExitCode := 2;
    end;
  end;
end.
