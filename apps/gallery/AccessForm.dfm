object AccessForm: TAccessForm
  Left = 0
  Top = 0
  ClientWidth = 600
  ClientHeight = 40
  BorderStyle = bsNone
  Caption = 'Access'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object EncodingLabel: TLabel
    Left = 12
    Top = 12
    Width = 96
    Height = 13
    Caption = '&Encoding of texts:'
    FocusControl = EncodingCombo
  end
  object EncodingCombo: TComboBox
    Left = 120
    Top = 8
    Width = 152
    Height = 21
    Style = csDropDownList
    Items.Strings = (
      'Find out'
      'UTF-8'
      'Western European'
      'Cyrillic'
      'Japanese')
    ItemIndex = 0
    TabOrder = 0
    OnChange = EncodingChange
  end
  object ReadOnlyBox: TCheckBox
    Left = 292
    Top = 10
    Width = 140
    Height = 17
    Caption = 'Open &read-only'
    TabOrder = 1
  end
end
