object KxGridForm: TGridForm
  Left = 0
  Top = 0
  BorderStyle = bsDialog
  Caption = 'Grid'
  ClientHeight = 150
  ClientWidth = 260
  Font.Height = -11
  Font.Name = 'Tahoma'
  PixelsPerInch = 96
  Position = poMainFormCenter
  OnCloseQuery = FormCloseQuery
  object WidthLabel: TLabel
    Left = 12
    Top = 15
    Width = 73
    Height = 13
    Caption = '&Width in pixels'
    FocusControl = WidthEdit
  end
  object HeightLabel: TLabel
    Left = 12
    Top = 43
    Width = 76
    Height = 13
    Caption = '&Height in pixels'
    FocusControl = HeightEdit
  end
  object WidthEdit: TEdit
    Left = 140
    Top = 12
    Width = 60
    Height = 21
    TabOrder = 0
  end
  object HeightEdit: TEdit
    Left = 140
    Top = 40
    Width = 60
    Height = 21
    TabOrder = 1
  end
  object ShowCheck: TCheckBox
    Left = 12
    Top = 68
    Width = 236
    Height = 17
    Caption = '&Show grid'
    TabOrder = 2
  end
  object SnapCheck: TCheckBox
    Left = 12
    Top = 90
    Width = 236
    Height = 17
    Caption = 'S&nap to grid'
    TabOrder = 3
  end
  object OkButton: TButton
    Left = 92
    Top = 114
    Width = 75
    Height = 25
    Caption = 'OK'
    Default = True
    ModalResult = 1
    TabOrder = 4
  end
  object CancelButton: TButton
    Left = 173
    Top = 114
    Width = 75
    Height = 25
    Cancel = True
    Caption = 'Cancel'
    ModalResult = 2
    TabOrder = 5
  end
end
