{ first MACHINE: loads a machine, poses it, and asks where its axes stand. }
program first;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$IFDEF MSWINDOWS}{$APPTYPE CONSOLE}{$ENDIF}

uses
  k5ax;

procedure Show(Machine: Pk5ax_machdef);
var
  Xyzabc: array[0..5] of Double;
begin
  if not UpdateNodeAxes_2(Machine, 30, 20, 50, -40 * k5ax_D2R, 0, 90 * k5ax_D2R) then
  begin
    ExitCode := 1;
    Exit;
  end;
  k5axCMachDef_SG2MachCoords(Machine, @Xyzabc);
  WriteLn('X ', Xyzabc[0]:0:3, '  Y ', Xyzabc[1]:0:3, '  Z ', Xyzabc[2]:0:3);
  WriteLn('A ', Xyzabc[3] * k5ax_R2D:0:3, '  C ', Xyzabc[5] * k5ax_R2D:0:3, ' degrees');
  WriteLn('the slide of Z stands at ', CMachDef_Axis_Position_Get(Machine, 3):0:3);
end;

var
  Machine: Pk5ax_machdef;

begin
  if ParamCount <> 1 then
  begin
    WriteLn(ErrOutput, 'usage: first MACHINE');
    Halt(2);
  end;
  Machine := k5axCMachDef_create;
  try
    if MachdefLoad(Machine, PAnsiChar(UTF8String(ParamStr(1)))) <> 0 then
      Show(Machine)
    else
    begin
      WriteLn(ErrOutput, 'first: ', ParamStr(1), ': not there, damaged, or no machine definition');
      ExitCode := 2;
    end;
  finally
    k5axCMachDef_free(@Machine);
  end;
end.
