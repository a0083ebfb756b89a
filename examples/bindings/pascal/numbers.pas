{ Numbers as text: six decimals and a point, a space before each. }
unit numbers;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  SysUtils, k5ax;

var
  PointAsDecimal: TFormatSettings; { whatever the system's language }

function Text(const Values: array of Double): string;
function PointText(const P: Tk5ax_point): string;

implementation

function Text(const Values: array of Double): string;
var
  Value: Double;
begin
  Result := '';
  for Value in Values do
    Result := Result + ' ' + FloatToStrF(Value, ffFixed, 18, 6, PointAsDecimal);
end;

function PointText(const P: Tk5ax_point): string;
begin
  Result := Text([P.x, P.y, P.z]);
end;

initialization
  PointAsDecimal := FormatSettings;
  PointAsDecimal.DecimalSeparator := '.';
end.
