{ The bridge for Free Pascal and Delphi: what a machine answers through its C++ classes alone, from the
  library in ../bridge. }
unit k5axbridge;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  k5ax;

const
{$IF defined(MSWINDOWS)}
  bridgeLibrary = 'k5ax_bridge.dll';
{$ELSEIF defined(FPC)}
  bridgeLibrary = 'k5ax_bridge'; { as the linker wants it: libk5ax_bridge.so }
{$ELSEIF defined(MACOS)}
  bridgeLibrary = 'libk5ax_bridge.dylib';
{$ELSE}
  bridgeLibrary = 'libk5ax_bridge.so';
{$IFEND}

type
  { Sinks are plain functions, neither methods nor closures: Data carries what a sink has to know. The texts
    are good until it returns, and no exception may leave it. }
  Tk5ax_bridge_text_sink = procedure(text: PAnsiChar; data: Pointer); cdecl;
  Tk5ax_bridge_error_sink = procedure(text: PAnsiChar; code: Integer; data: Pointer); cdecl;
  Tk5ax_bridge_assertion_sink = procedure(a, b, c: PAnsiChar; line: Integer; data: Pointer); cdecl;

function k5ax_bridge_is_valid(machdef: Pk5ax_machdef): Integer; cdecl; external bridgeLibrary;
procedure k5ax_bridge_part_to_machine(machdef: Pk5ax_machdef; p_part, abc, p_mach: PDouble); cdecl;
  external bridgeLibrary;
procedure k5ax_bridge_machine_to_part(machdef: Pk5ax_machdef; p_mach, abc, p_part, d_tool_part: PDouble);
  cdecl; external bridgeLibrary;
function k5ax_bridge_node_kind(node: Pk5ax_node): Integer; cdecl; external bridgeLibrary;
procedure k5ax_bridge_node_matrix(node: Pk5ax_node; node_to_parent: PDouble); cdecl; external bridgeLibrary;
function k5ax_bridge_node_axis(node: Pk5ax_node): PAxis; cdecl; external bridgeLibrary;
procedure k5ax_bridge_on_feedback(sink: Tk5ax_bridge_text_sink; data: Pointer); cdecl; external bridgeLibrary;
procedure k5ax_bridge_on_error(sink: Tk5ax_bridge_error_sink; data: Pointer); cdecl; external bridgeLibrary;
procedure k5ax_bridge_on_assertion(sink: Tk5ax_bridge_assertion_sink; data: Pointer); cdecl;
  external bridgeLibrary;
procedure k5ax_bridge_feedback(text: PAnsiChar); cdecl; external bridgeLibrary;
procedure k5ax_bridge_error(text: PAnsiChar; code: Integer); cdecl; external bridgeLibrary;
procedure k5ax_bridge_assertion_failed(a, b, c: PAnsiChar; line: Integer); cdecl; external bridgeLibrary;

implementation

end.
