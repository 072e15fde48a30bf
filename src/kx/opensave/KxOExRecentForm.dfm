object KxOpenExRecentFrm: TKxOpenExRecentFrm
  Left = 192
  Top = 107
  BorderIcons = []
  BorderStyle = bsNone
  ClientHeight = 188
  ClientWidth = 393
  Color = clBtnFace
  Font.Charset = DEFAULT_CHARSET
  Font.Color = clWindowText
  Font.Height = -11
  Font.Name = 'MS Sans Serif'
  Font.Style = []
  OldCreateOrder = False
  PixelsPerInch = 96
  TextHeight = 13
  object ListView1: TListView
    Left = 0
    Top = 0
    Width = 393
    Height = 188
    Align = alClient
    Columns = <
      item
        Caption = 'Datei'
        Width = 110
      end
      item
        Caption = 'Verzeichnis'
        Width = 250
      end>
    TabOrder = 0
    ViewStyle = vsReport
    OnChange = ListView1Change
    OnDblClick = ListView1DblClick
  end
end
