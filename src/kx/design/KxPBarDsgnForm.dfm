object KxPBarEditFrm: TKxPBarEditFrm
  Left = 192
  Top = 107
  Width = 182
  Height = 233
  BorderIcons = [biSystemMenu, biMinimize]
  Caption = 'Places Bar items'
  Color = clBtnFace
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  Constraints.MaxWidth = 182
  Constraints.MinHeight = 209
  Constraints.MinWidth = 182
  ShowHint = True
  OnClose = FormClose
  OnCreate = FormCreate
  OnDestroy = FormDestroy
  object ps1: TPageScroller
    Left = 0
    Top = 0
    Width = 87
    Height = 206
    Align = alLeft
    Color = clBtnShadow
    Control = ToolBar1
    Orientation = soVertical
    ParentColor = False
    TabOrder = 0
    object ToolBar1: TToolBar
      Left = 0
      Top = 0
      Width = 87
      Height = 206
      Align = alNone
      AutoSize = True
      ButtonHeight = 49
      ButtonWidth = 87
      EdgeBorders = []
      Flat = True
      TabOrder = 0
    end
  end
  object btnEdit: TButton
    Left = 96
    Top = 8
    Width = 75
    Height = 25
    Hint = 'Edit place'
    Caption = '&Edit...'
    TabOrder = 1
    OnClick = btnEditClick
  end
  object Button1: TButton
    Left = 96
    Top = 40
    Width = 75
    Height = 25
    Hint = 'New place'
    Caption = '&Add...'
    TabOrder = 2
    OnClick = Button1Click
  end
  object Button2: TButton
    Left = 96
    Top = 72
    Width = 75
    Height = 25
    Hint = 'Delete place'
    Caption = '&Delete...'
    TabOrder = 3
    OnClick = Button2Click
  end
  object Button3: TButton
    Left = 96
    Top = 104
    Width = 75
    Height = 25
    Hint = 'Close property editor'
    Caption = '&Close'
    ModalResult = 2
    TabOrder = 4
    OnClick = Button3Click
  end
  object Button4: TButton
    Left = 96
    Top = 152
    Width = 75
    Height = 25
    Hint = 'Save all these items in registry and delete them from DFM file'
    Caption = 'Registry...'
    TabOrder = 5
    OnClick = Button4Click
  end
end
