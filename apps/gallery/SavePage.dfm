object SavePage: TSavePage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Save dialog, with everything'
  Hint = 
    'What the user types, takes and replaces, the program hears first' +
    '.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object SaveGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 272
    Height = 140
    Caption = 'Saving'
    TabOrder = 0
    object NameLabel: TLabel
      Left = 16
      Top = 28
      Width = 72
      Height = 13
      Caption = 'File &name:'
      FocusControl = NameEdit
    end
    object NameEdit: TEdit
      Left = 112
      Top = 24
      Width = 144
      Height = 21
      TabOrder = 0
      Text = 'Report'
    end
    object ExtensionLabel: TLabel
      Left = 16
      Top = 55
      Width = 92
      Height = 13
      Caption = 'E&xtension:'
      FocusControl = ExtensionEdit
    end
    object ExtensionEdit: TEdit
      Left = 112
      Top = 51
      Width = 144
      Height = 21
      TabOrder = 1
      Text = 'txt'
    end
    object OkLabel: TLabel
      Left = 16
      Top = 82
      Width = 72
      Height = 13
      Caption = 'O&K button:'
      FocusControl = OkEdit
    end
    object OkEdit: TEdit
      Left = 112
      Top = 78
      Width = 144
      Height = 21
      TabOrder = 2
      Text = 'Keep'
    end
    object OverwriteBox: TCheckBox
      Left = 16
      Top = 110
      Width = 240
      Height = 17
      Caption = '&Ask before a file is replaced'
      Checked = True
      State = cbChecked
      TabOrder = 3
    end
  end
  object ShareGroup: TGroupBox
    Left = 16
    Top = 168
    Width = 272
    Height = 88
    Caption = 'A file that is in use'
    TabOrder = 1
    object HoldBox: TCheckBox
      Left = 16
      Top = 24
      Width = 240
      Height = 17
      Caption = '&Hold "Read me first.txt" open meanwhile'
      Checked = True
      State = cbChecked
      TabOrder = 0
    end
    object ShareLabel: TLabel
      Left = 16
      Top = 54
      Width = 92
      Height = 13
      Caption = '&When chosen:'
      FocusControl = ShareCombo
    end
    object ShareCombo: TComboBox
      Left = 112
      Top = 50
      Width = 144
      Height = 21
      Style = csDropDownList
      Items.Strings = (
        'Leave it to the system'
        'Refuse with a message'
        'Refuse silently'
        'Take it')
      ItemIndex = 2
      TabOrder = 1
    end
  end
  object FormsGroup: TGroupBox
    Left = 300
    Top = 16
    Width = 268
    Height = 80
    Caption = 'Docked forms'
    TabOrder = 2
    object FilterBox: TCheckBox
      Left = 16
      Top = 24
      Width = 236
      Height = 17
      Caption = '&Top: a filter for the names shown'
      Checked = True
      State = cbChecked
      TabOrder = 0
    end
    object EventsBox: TCheckBox
      Left = 16
      Top = 47
      Width = 236
      Height = 17
      Caption = '&Bottom: events, and vetoes'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
  end
  object BarsGroup: TGroupBox
    Left = 300
    Top = 108
    Width = 268
    Height = 88
    Caption = 'Bar and size'
    TabOrder = 3
    object PlacesLabel: TLabel
      Left = 16
      Top = 28
      Width = 72
      Height = 13
      Caption = '&Places bar:'
      FocusControl = PlacesCombo
    end
    object PlacesCombo: TComboBox
      Left = 96
      Top = 24
      Width = 156
      Height = 21
      Style = csDropDownList
      Items.Strings = (
        'None'
        'The system'#39's'
        'The library'#39's')
      ItemIndex = 2
      TabOrder = 0
    end
    object SizeableBox: TCheckBox
      Left = 16
      Top = 56
      Width = 236
      Height = 17
      Caption = 'Si&zeable dialog'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
  end
  object SaveButton: TButton
    Left = 16
    Top = 276
    Width = 96
    Height = 25
    Caption = '&Save...'
    Default = True
    TabOrder = 4
    OnClick = SaveButtonClick
  end
  object Dialog: TKxSaveDialog
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
    CustDlgParams.Position = dpMainFormCenter
    OnIncludeFile = DialogIncludeFile
  end
end
