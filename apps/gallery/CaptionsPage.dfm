object CaptionsPage: TCaptionsPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Captions and hidden controls'
  Hint = 
    'The standard controls speak the program'#39's language, and those th' +
    'at are not wanted stay away.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object CaptionsGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 380
    Height = 264
    Caption = 'Captions'
    TabOrder = 0
    object TextsLabel: TLabel
      Left = 16
      Top = 28
      Width = 88
      Height = 13
      Caption = 'Te&xts:'
      FocusControl = TextsCombo
    end
    object TextsCombo: TComboBox
      Left = 120
      Top = 24
      Width = 244
      Height = 21
      Style = csDropDownList
      Items.Strings = (
        'The system'#39's own'
        'English, in other words'
        'German'
        'Russian')
      ItemIndex = 0
      TabOrder = 0
      OnChange = TextsChange
    end
    object OkLabel: TLabel
      Left = 16
      Top = 60
      Width = 100
      Height = 13
      Caption = 'O&K button:'
      FocusControl = OkEdit
    end
    object OkEdit: TEdit
      Left = 120
      Top = 56
      Width = 244
      Height = 21
      TabOrder = 1
    end
    object CancelLabel: TLabel
      Left = 16
      Top = 88
      Width = 100
      Height = 13
      Caption = '&Cancel button:'
      FocusControl = CancelEdit
    end
    object CancelEdit: TEdit
      Left = 120
      Top = 84
      Width = 244
      Height = 21
      TabOrder = 2
    end
    object HelpLabel: TLabel
      Left = 16
      Top = 116
      Width = 100
      Height = 13
      Caption = '&Help button:'
      FocusControl = HelpEdit
    end
    object HelpEdit: TEdit
      Left = 120
      Top = 112
      Width = 244
      Height = 21
      TabOrder = 3
    end
    object LookInLabel: TLabel
      Left = 16
      Top = 144
      Width = 100
      Height = 13
      Caption = 'Look &in:'
      FocusControl = LookInEdit
    end
    object LookInEdit: TEdit
      Left = 120
      Top = 140
      Width = 244
      Height = 21
      TabOrder = 4
    end
    object FileNameLabel: TLabel
      Left = 16
      Top = 172
      Width = 100
      Height = 13
      Caption = 'File &name:'
      FocusControl = FileNameEdit
    end
    object FileNameEdit: TEdit
      Left = 120
      Top = 168
      Width = 244
      Height = 21
      TabOrder = 5
    end
    object FileTypeLabel: TLabel
      Left = 16
      Top = 200
      Width = 100
      Height = 13
      Caption = 'File &type:'
      FocusControl = FileTypeEdit
    end
    object FileTypeEdit: TEdit
      Left = 120
      Top = 196
      Width = 244
      Height = 21
      TabOrder = 6
    end
    object ReadOnlyLabel: TLabel
      Left = 16
      Top = 228
      Width = 100
      Height = 13
      Caption = '&Read-only box:'
      FocusControl = ReadOnlyEdit
    end
    object ReadOnlyEdit: TEdit
      Left = 120
      Top = 224
      Width = 244
      Height = 21
      TabOrder = 7
    end
  end
  object VisibleGroup: TGroupBox
    Left = 408
    Top = 16
    Width = 352
    Height = 264
    Caption = 'Visible controls'
    TabOrder = 1
    object FolderComboBox: TCheckBox
      Left = 16
      Top = 26
      Width = 232
      Height = 17
      Caption = 'Look-in box'
      Checked = True
      State = cbChecked
      TabOrder = 0
    end
    object FolderLabelBox: TCheckBox
      Left = 16
      Top = 50
      Width = 232
      Height = 17
      Caption = 'Label of the look-in box'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
    object ToolBarBox: TCheckBox
      Left = 16
      Top = 74
      Width = 232
      Height = 17
      Caption = 'Tool &bar'
      Checked = True
      State = cbChecked
      TabOrder = 2
    end
    object OkBox: TCheckBox
      Left = 16
      Top = 98
      Width = 232
      Height = 17
      Caption = 'OK button'
      Checked = True
      State = cbChecked
      TabOrder = 3
    end
    object CancelBox: TCheckBox
      Left = 16
      Top = 122
      Width = 232
      Height = 17
      Caption = 'Cancel button'
      Checked = True
      State = cbChecked
      TabOrder = 4
    end
    object NameBox: TCheckBox
      Left = 16
      Top = 146
      Width = 232
      Height = 17
      Caption = 'Name box'
      Checked = True
      State = cbChecked
      TabOrder = 5
    end
    object NameLabelBox: TCheckBox
      Left = 16
      Top = 170
      Width = 232
      Height = 17
      Caption = 'Label of the name box'
      Checked = True
      State = cbChecked
      TabOrder = 6
    end
    object TypeBox: TCheckBox
      Left = 16
      Top = 194
      Width = 232
      Height = 17
      Caption = 'Type box'
      Checked = True
      State = cbChecked
      TabOrder = 7
    end
    object TypeLabelBox: TCheckBox
      Left = 16
      Top = 218
      Width = 232
      Height = 17
      Caption = 'Label of the type box'
      Checked = True
      State = cbChecked
      TabOrder = 8
    end
  end
  object OpenButton: TButton
    Left = 16
    Top = 296
    Width = 96
    Height = 25
    Caption = '&Open...'
    Default = True
    TabOrder = 2
    OnClick = OpenButtonClick
  end
  object SaveButton: TButton
    Left = 120
    Top = 296
    Width = 96
    Height = 25
    Caption = '&Save...'
    TabOrder = 3
    OnClick = SaveButtonClick
  end
  object OpenDialog: TKxOpenLiteDialog
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
    Options = [ofShowHelp, ofEnableSizing, ofNoChangeDir]
    CustDlgParams.Position = dpMainFormCenter
  end
  object SaveDialog: TKxSaveLiteDialog
    DefaultExt = 'txt'
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
    Options = [ofOverwritePrompt, ofShowHelp, ofEnableSizing, ofNoChangeDir]
    CustDlgParams.Position = dpMainFormCenter
  end
end
