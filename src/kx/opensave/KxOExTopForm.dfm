object KxOpenExTopFrm: TKxOpenExTopFrm
  Left = 192
  Top = 107
  BorderIcons = []
  BorderStyle = bsNone
  ClientHeight = 23
  ClientWidth = 536
  Color = clBtnFace
  Font.Charset = DEFAULT_CHARSET
  Font.Color = clWindowText
  Font.Height = -11
  Font.Name = 'MS Sans Serif'
  Font.Style = []
  OldCreateOrder = False
  PixelsPerInch = 96
  TextHeight = 13
  object TabControl1: TTabControl
    Left = -1
    Top = 0
    Width = 9000
    Height = 193
    HotTrack = True
    TabOrder = 0
    Tabs.Strings = (
      'Durchsuchen'
      'Zuletzt verwendet')
    TabIndex = 0
    OnChange = TabControl1Change
    OnChanging = TabControl1Changing
  end
end
