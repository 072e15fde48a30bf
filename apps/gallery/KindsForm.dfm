object KindsForm: TKindsForm
  Left = 0
  Top = 0
  ClientWidth = 520
  ClientHeight = 36
  BorderStyle = bsNone
  Caption = 'Kinds of files'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object ShowLabel: TLabel
    Left = 12
    Top = 12
    Width = 40
    Height = 13
    Caption = 'Show:'
  end
  object FoldersBox: TCheckBox
    Left = 56
    Top = 10
    Width = 76
    Height = 17
    Caption = '&Folders'
    Checked = True
    State = cbChecked
    TabOrder = 0
    OnClick = BoxClick
  end
  object PicturesBox: TCheckBox
    Left = 144
    Top = 10
    Width = 80
    Height = 17
    Caption = '&Pictures'
    Checked = True
    State = cbChecked
    TabOrder = 1
    OnClick = BoxClick
  end
  object TextsBox: TCheckBox
    Left = 236
    Top = 10
    Width = 68
    Height = 17
    Caption = 'Te&xts'
    Checked = True
    State = cbChecked
    TabOrder = 2
    OnClick = BoxClick
  end
  object OthersBox: TCheckBox
    Left = 316
    Top = 10
    Width = 90
    Height = 17
    Caption = 'The &rest'
    Checked = True
    State = cbChecked
    TabOrder = 3
    OnClick = BoxClick
  end
end
