{ The flat functions of k5ax for Free Pascal and Delphi.

  Integers are 32 bits, a C bool is a ByteBool, records have the layout of C, strings are UTF-8. A pointer
  that the library lends belongs to its machine and ends with it. Where C has an enumeration a file may hold
  any number, so these are integers with constants here. }
unit k5ax;

{$IFDEF FPC}{$MODE DELPHI}{$PACKRECORDS C}{$ELSE}{$ALIGN 8}{$ENDIF}

interface

const
{$IF defined(MSWINDOWS)}
  k5axLibrary = 'k5ax.dll';
{$ELSEIF defined(FPC)}
  k5axLibrary = 'k5ax'; { as the linker wants it: libk5ax.so }
{$ELSEIF defined(MACOS)}
  k5axLibrary = 'libk5ax.1.dylib';
{$ELSE}
  k5axLibrary = 'libk5ax.so.1';
{$IFEND}

type
  { The letter of an axis }
  TAxisType = Integer;
  TAxisMode = Integer;
  TAxisLocation = Integer;
  { Where the two rotary axes sit }
  TMachineType = Integer;
  { The host's own; the library never looks at them }
  TMachineMode = Integer;
  TDiscipline = Integer;

const
  AXIS_TYPE_INVALID_LOWEST = -1;
  AXIS_A = 0;
  AXIS_B = 1;
  AXIS_C = 2;
  AXIS_X = 3;
  AXIS_Y = 4;
  AXIS_Z = 5;
  AXIS_DUMMY = 6;
  AXIS_TYPE_INVALID_HIGHEST = 7;

  AXIS_MODE_INVALID_LOWEST = -1;
  ROTARY = 0;
  LINEAR = 1;
  AXIS_MODE_INVALID_HIGHEST = 2;

  AXIS_LOCATION_INVALID_LOWEST = -1;
  HEAD = 0;
  TABLE = 1;
  AXIS_LOCATION_INVALID_HIGHEST = 2;

  MC_UNDEFINED = -1;
  MC_TT = 0;
  MC_HT = 1;
  MC_HH = 2;

type
  Tk5ax_point = record
    x, y, z: Double;
  end;

  { One axis. Lengths are in the machine's unit, angles in radians. }
  PAxis = ^TAxis;
  TAxis = record
    base: Tk5ax_point;
    vector: Tk5ax_point;
    &type: TAxisType;
    location: TAxisLocation;
    min: Double;
    max: Double;
    mode: TAxisMode;
  end;
  PPAxis = ^PAxis;

  { Lengths are in the machine's unit, angles in radians. }
  PAngledHead = ^TAngledHead;
  TAngledHead = record
    b_angle: Double;
    c_angle: Double;
    length1: Double;
    length2: Double;
    tip: Tk5ax_point;
    tool_dir: Tk5ax_point;
    ref_dir: Tk5ax_point;
    offset: Tk5ax_point;
    flags: Cardinal;
  end;

  { The live state of one axis node }
  PNodeState = ^TNodeState;
  TNodeState = record
    id: Integer;
    flags: Cardinal;
    value: Double;
  end;

  { What a program sees of these is their address alone. }
  Pk5ax_machdef = ^Tk5ax_machdef;
  Tk5ax_machdef = record end;
  PPk5ax_machdef = ^Pk5ax_machdef;
  Pk5ax_node = ^Tk5ax_node;
  Tk5ax_node = record end;
  PPk5ax_node = ^Pk5ax_node;
  Pk5ax_axis_node = ^Tk5ax_axis_node;
  Tk5ax_axis_node = record end;
  Pk5ax_tool_node = ^Tk5ax_tool_node;
  Tk5ax_tool_node = record end;

{ ---- the process, angles ---- }

function md_flags_get: Cardinal; cdecl; external k5axLibrary;
procedure md_flags_set(flags: Cardinal); cdecl; external k5axLibrary;
function md_regression: Integer; cdecl; external k5axLibrary;
function k5ax_R2D: Double; cdecl; external k5axLibrary;
function k5ax_D2R: Double; cdecl; external k5axLibrary;
function k5ax_normalise_angle(angle: Double; range: Integer): Double; cdecl; external k5axLibrary;

{ ---- the angled head ---- }

procedure k5ax_angled_head_initialise(head: PAngledHead); cdecl; external k5axLibrary;
procedure k5ax_angled_head_copy(dst, src: PAngledHead); cdecl; external k5axLibrary;
function k5ax_angled_head_flags_get(head: PAngledHead): Cardinal; cdecl; external k5axLibrary;
procedure k5ax_angled_head_flags_set(head: PAngledHead; flags: Cardinal); cdecl; external k5axLibrary;
procedure k5ax_angled_head_set(c_degrees, b_degrees: Double; lengths: PDouble; side_offset: Double;
  head: PAngledHead); cdecl; external k5axLibrary;
function k5ax_is_angled_head(head: PAngledHead): Integer; cdecl; external k5axLibrary;
procedure k5ax_angled_head_scale(head: PAngledHead; factor: Double); cdecl; external k5axLibrary;

{ ---- axis records ---- }

function axis_clone(axis: PAxis): PAxis; cdecl; external k5axLibrary;
function axis_copy(&to, from: PAxis): Integer; cdecl; external k5axLibrary;
function axis_free(axis: PPAxis): Integer; cdecl; external k5axLibrary;
function axis_location(axis: PAxis): TAxisLocation; cdecl; external k5axLibrary;
function axis_limits(axis: PAxis): PDouble; cdecl; external k5axLibrary;
function axis_get_value(axis: PAxis; x, y, z: Double): Double; cdecl; external k5axLibrary;
function axis_set_value(axis: PAxis; value: Double; x, y, z: PDouble): Integer; cdecl; external k5axLibrary;
function AXIS_TYPE_val_get(&type: TAxisType; x, y, z, a, b, c: PDouble): PDouble; cdecl; external k5axLibrary;

{ ---- the machine ---- }

function k5axCMachDef_create: Pk5ax_machdef; cdecl; external k5axLibrary;
procedure k5axCMachDef_free(machdef: PPk5ax_machdef); cdecl; external k5axLibrary;
procedure k5axCMachDef_clone(dst, src: Pk5ax_machdef); cdecl; external k5axLibrary;
procedure k5axCMachDef_clone_ex(dst, src: Pk5ax_machdef; flags: Cardinal); cdecl; external k5axLibrary;
function k5axCMachDef_flags_get(machdef: Pk5ax_machdef): Cardinal; cdecl; external k5axLibrary;
procedure k5axCMachDef_flags_set(machdef: Pk5ax_machdef; flags: Cardinal); cdecl; external k5axLibrary;
function k5axCMachDef_mode(machdef: Pk5ax_machdef): TMachineMode; cdecl; external k5axLibrary;
function k5axCMachDef_type(machdef: Pk5ax_machdef): TMachineType; cdecl; external k5axLibrary;
function k5axCMachDef_discipline(machdef: Pk5ax_machdef): TDiscipline; cdecl; external k5axLibrary;
function k5axCMachDef_head(machdef: Pk5ax_machdef): PAngledHead; cdecl; external k5axLibrary;
function k5axCMachDef_head_const(machdef: Pk5ax_machdef): PAngledHead; cdecl; external k5axLibrary;
function k5axCMachDef_axis(which: Integer; machdef: Pk5ax_machdef): PAxis; cdecl; external k5axLibrary;
function k5axCMachDef_rotary_axis(machdef: Pk5ax_machdef): PAxis; cdecl; external k5axLibrary;
function k5axCMachDef_rotary_axis_const(machdef: Pk5ax_machdef): PAxis; cdecl; external k5axLibrary;
function k5axCMachDef_orthogonal(machdef: Pk5ax_machdef): ByteBool; cdecl; external k5axLibrary;
function k5axCMachDef_orientate(machdef: Pk5ax_machdef; angle1, angle2: Double): ByteBool; cdecl;
  external k5axLibrary;
function k5axCMachDef_SG(machdef: Pk5ax_machdef; i: Integer): Pk5ax_node; cdecl; external k5axLibrary;
function k5axCMachDef_Tool(machdef: Pk5ax_machdef): Pk5ax_tool_node; cdecl; external k5axLibrary;
function MachdefSave(machdef: Pk5ax_machdef; path: PAnsiChar): Integer; cdecl; external k5axLibrary;
function MachdefLoad(machdef: Pk5ax_machdef; path: PAnsiChar): Integer; cdecl; external k5axLibrary;

{ ---- posing ---- }

procedure Cartesian2AxialRotaryVals_c(machdef: Pk5ax_machdef; point, rotary: PDouble;
  refAxis, refSign: Integer; outPoint, outRotary, radius: PDouble); cdecl; external k5axLibrary;
function UpdateNodeAxes_2(machdef: Pk5ax_machdef; x, y, z, a, b, c: Double): ByteBool; cdecl;
  external k5axLibrary;
function k5axCMachDef_MachCoords2SG(machdef: Pk5ax_machdef; v: PDouble): Integer; cdecl; external k5axLibrary;
procedure k5axCMachDef_SG2MachCoords(machdef: Pk5ax_machdef; v: PDouble); cdecl; external k5axLibrary;
function CMachDef_IdAxisState_set2(machdef: Pk5ax_machdef; states: PNodeState; count: Integer): Integer;
  cdecl; external k5axLibrary;
function CMachDef_Axis_Position_Get(machdef: Pk5ax_machdef; id: Integer): Double; cdecl; external k5axLibrary;
procedure CMachDef_ToolNode_matrix_SetXYZ(machdef: Pk5ax_machdef; x, y, z: Double); cdecl;
  external k5axLibrary;

{ ---- nodes ---- }

function k5axSgNode_child_count(node: Pk5ax_node): Integer; cdecl; external k5axLibrary;
function k5axSgNode_child(node: Pk5ax_node; index: Integer): Pk5ax_node; cdecl; external k5axLibrary;
function k5axSgNode_parent(node: Pk5ax_node): Pk5ax_node; cdecl; external k5axLibrary;
function k5axSgNode_all_nodes(node: Pk5ax_node; buffer: PPk5ax_node): Integer; cdecl; external k5axLibrary;
function k5axSgNode_id(node: Pk5ax_node): Integer; cdecl; external k5axLibrary;
function k5axSgNode_value_get(node: Pk5ax_node): Double; cdecl; external k5axLibrary;
procedure k5axSgNode_value_set(node: Pk5ax_node; value: Double); cdecl; external k5axLibrary;
procedure k5axSgNode_value_set2(selector: Cardinal; n: Pk5ax_node; value: Double); cdecl;
  external k5axLibrary;
function k5axSgNode_flags_get(node: Pk5ax_node): Cardinal; cdecl; external k5axLibrary;
procedure k5axSgNode_flags_set(node: Pk5ax_node; flags: Cardinal); cdecl; external k5axLibrary;
procedure k5axSgNode_initialise(node: Pk5ax_node; recursive: Integer); cdecl; external k5axLibrary;
function k5axSgNode_calc_flags(first, second: Integer): Cardinal; cdecl; external k5axLibrary;
procedure k5axSgNode_state_get_(node: Pk5ax_node; state: PNodeState); cdecl; external k5axLibrary;
function k5axSgNode_NodeAxis_cast(node: Pk5ax_node): Pk5ax_axis_node; cdecl; external k5axLibrary;

implementation

uses
  Math;

initialization
  { C goes on with infinity and NaN where Pascal would raise an exception in the middle of the library. The
    program's other threads do the same for themselves. }
  SetExceptionMask([exInvalidOp, exDenormalized, exZeroDivide, exOverflow, exUnderflow, exPrecision]);
end.
