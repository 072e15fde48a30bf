object PlainPage: TPlainPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'The system'#39's dialogs'
  Hint = 
    'What Windows offers by itself, for comparison with the pages tha' +
    't follow.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object TitleLabel: TLabel
    Left = 16
    Top = 20
    Width = 24
    Height = 13
    Caption = '&Title:'
    FocusControl = TitleEdit
  end
  object NameLabel: TLabel
    Left = 16
    Top = 48
    Width = 50
    Height = 13
    Caption = 'File &name:'
    FocusControl = NameEdit
  end
  object ExtensionLabel: TLabel
    Left = 16
    Top = 76
    Width = 90
    Height = 13
    Caption = 'Default &extension:'
    FocusControl = ExtensionEdit
  end
  object TitleEdit: TEdit
    Left = 128
    Top = 16
    Width = 304
    Height = 21
    TabOrder = 0
  end
  object NameEdit: TEdit
    Left = 128
    Top = 44
    Width = 304
    Height = 21
    TabOrder = 1
  end
  object ExtensionEdit: TEdit
    Left = 128
    Top = 72
    Width = 72
    Height = 21
    TabOrder = 2
    Text = 'txt'
  end
  object OptionsGroup: TGroupBox
    Left = 16
    Top = 108
    Width = 416
    Height = 132
    Caption = 'Options'
    TabOrder = 3
    object SeveralBox: TCheckBox
      Left = 16
      Top = 24
      Width = 184
      Height = 17
      Caption = 'Se&veral files at once'
      TabOrder = 0
    end
    object MustExistBox: TCheckBox
      Left = 16
      Top = 48
      Width = 184
      Height = 17
      Caption = 'File &must exist'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
    object OverwriteBox: TCheckBox
      Left = 16
      Top = 72
      Width = 184
      Height = 17
      Caption = '&Ask before overwriting'
      Checked = True
      State = cbChecked
      TabOrder = 2
    end
    object HelpBox: TCheckBox
      Left = 16
      Top = 96
      Width = 184
      Height = 17
      Caption = '&Help button'
      TabOrder = 3
    end
    object ReadOnlyBox: TCheckBox
      Left = 216
      Top = 24
      Width = 184
      Height = 17
      Caption = '&Read-only box'
      TabOrder = 4
    end
    object SizeableBox: TCheckBox
      Left = 216
      Top = 48
      Width = 184
      Height = 17
      Caption = 'Si&zable'
      Checked = True
      State = cbChecked
      TabOrder = 5
    end
    object PlacesBox: TCheckBox
      Left = 216
      Top = 72
      Width = 184
      Height = 17
      Caption = '&Places bar'
      Checked = True
      State = cbChecked
      TabOrder = 6
    end
    object KeepFolderBox: TCheckBox
      Left = 216
      Top = 96
      Width = 184
      Height = 17
      Caption = '&Keep the current folder'
      Checked = True
      State = cbChecked
      TabOrder = 7
    end
  end
  object OpenButton: TButton
    Left = 16
    Top = 256
    Width = 96
    Height = 25
    Caption = '&Open...'
    Default = True
    TabOrder = 4
    OnClick = OpenButtonClick
  end
  object SaveButton: TButton
    Left = 120
    Top = 256
    Width = 96
    Height = 25
    Caption = '&Save...'
    TabOrder = 5
    OnClick = SaveButtonClick
  end
  object OpenDialog: TOpenDialog
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
  end
  object SaveDialog: TSaveDialog
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
  end
end
