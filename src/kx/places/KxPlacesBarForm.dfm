object KxPlacesBarFrm: TKxPlacesBarFrm
  Left = 200
  Top = 108
  BorderIcons = []
  BorderStyle = bsNone
  ClientHeight = 232
  ClientWidth = 119
  Color = clBtnShadow
  Font.Charset = DEFAULT_CHARSET
  Font.Color = clWindowText
  Font.Height = -11
  Font.Name = 'MS Sans Serif'
  Font.Style = []
  KeyPreview = True
  OldCreateOrder = False
  ShowHint = True
  OnCreate = FormCreate
  PixelsPerInch = 96
  TextHeight = 13
  object Panel1: TPanel
    Left = 0
    Top = 0
    Width = 119
    Height = 232
    Align = alClient
    BevelOuter = bvNone
    BorderStyle = bsSingle
    Caption = ''
    Color = clBtnShadow
    TabOrder = 0
    object ps1: TPageScroller
      Left = 0
      Top = 0
      Width = 115
      Height = 228
      Align = alClient
      AutoScroll = True
      Control = ToolBar1
      Orientation = soVertical
      TabOrder = 0
      object ToolBar1: TToolBar
        Left = 0
        Top = 0
        Width = 115
        Height = 49
        AutoSize = True
        ButtonHeight = 49
        ButtonWidth = 87
        EdgeBorders = []
        Flat = True
        PopupMenu = pop1
        TabOrder = 0
      end
    end
  end
  object pop1: TPopupMenu
    object Deleteplace1: TMenuItem
      Caption = 'L'#246'sche Verzeichnis-Shortcut...'
      OnClick = Deleteplace1Click
    end
    object Changeplace1: TMenuItem
      Caption = 'Eigenschaften...'
      OnClick = Changeplace1Click
    end
  end
end
