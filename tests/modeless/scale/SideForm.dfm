object SideForm: TSideForm
  Left = 0
  Top = 0
  ClientWidth = 150
  ClientHeight = 232
  BorderStyle = bsNone
  Caption = 'Side'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object NameLabel: TLabel
    Left = 8
    Top = 8
    Width = 72
    Height = 13
    Caption = 'Drawing &name:'
    FocusControl = NameEdit
  end
  object NameEdit: TEdit
    Left = 8
    Top = 24
    Width = 134
    Height = 21
    Anchors = [akLeft, akTop, akRight]
    TabOrder = 0
    Text = 'Groundplan'
  end
  object LayerCombo: TComboBox
    Left = 8
    Top = 52
    Width = 134
    Height = 21
    Style = csDropDownList
    Anchors = [akLeft, akTop, akRight]
    ItemHeight = 13
    ItemIndex = 0
    Items.Strings = (
      'Walls and doors'
      'Wiring')
    TabOrder = 1
  end
  object GridCheck: TCheckBox
    Left = 8
    Top = 80
    Width = 134
    Height = 17
    Caption = '&Grid is shown'
    Checked = True
    State = cbChecked
    TabOrder = 2
  end
  object UnitsGroup: TGroupBox
    Left = 8
    Top = 102
    Width = 134
    Height = 64
    Anchors = [akLeft, akTop, akRight]
    Caption = 'Units of length'
    TabOrder = 3
    object MetersButton: TRadioButton
      Left = 10
      Top = 18
      Width = 112
      Height = 17
      Caption = '&Metres'
      Checked = True
      TabOrder = 0
      TabStop = True
    end
    object FeetButton: TRadioButton
      Left = 10
      Top = 39
      Width = 112
      Height = 17
      Caption = 'F&eet'
      TabOrder = 1
    end
  end
  object ZoomButton: TSpeedButton
    Left = 8
    Top = 174
    Width = 23
    Height = 22
  end
  object TurnButton: TSpeedButton
    Left = 34
    Top = 174
    Width = 108
    Height = 22
    Caption = 'Turn around'
  end
  object ApplyButton: TButton
    Left = 8
    Top = 202
    Width = 75
    Height = 25
    Caption = 'Apply'
    TabOrder = 4
  end
end
