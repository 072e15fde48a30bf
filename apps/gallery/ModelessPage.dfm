object ModelessPage: TModelessPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Open dialog that does not block'
  Hint = 
    'The dialog stays open in a thread of its own; the window goes on' +
    '.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object DialogGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 272
    Height = 88
    Caption = 'Dialog'
    TabOrder = 0
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
      Width = 160
      Height = 21
      Style = csDropDownList
      Items.Strings = (
        'None'
        'The system'#39's'
        'The library'#39's')
      ItemIndex = 2
      TabOrder = 0
    end
    object PreviewBox: TCheckBox
      Left = 16
      Top = 56
      Width = 240
      Height = 17
      Caption = '&Right: a preview of the selected file'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
  end
  object ShowButton: TButton
    Left = 16
    Top = 120
    Width = 96
    Height = 25
    Caption = '&Show'
    Default = True
    TabOrder = 1
    OnClick = ShowButtonClick
  end
  object NotesGroup: TGroupBox
    Left = 300
    Top = 16
    Width = 476
    Height = 240
    Caption = 'Meanwhile'
    TabOrder = 2
    object SelectedTitleLabel: TLabel
      Left = 16
      Top = 28
      Width = 136
      Height = 13
      Caption = 'Selected in the dialog:'
    end
    object SelectedLabel: TLabel
      Left = 156
      Top = 28
      Width = 304
      Height = 13
      AutoSize = False
    end
    object NotesLabel: TLabel
      Left = 16
      Top = 58
      Width = 72
      Height = 13
      Caption = '&Notes:'
      FocusControl = NotesMemo
    end
    object NotesMemo: TMemo
      Left = 16
      Top = 78
      Width = 320
      Height = 146
      ScrollBars = ssVertical
      TabOrder = 0
    end
    object NoteButton: TButton
      Left = 348
      Top = 78
      Width = 112
      Height = 25
      Caption = 'N&ote the name'
      Enabled = False
      TabOrder = 1
      OnClick = NoteButtonClick
    end
  end
  object Dialog: TKxOpenDialog
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
    Title = 'Files for the report'
    OnSelectionChange = DialogSelectionChange
  end
  object Runner: TKxModelessDialog
    Dialog = Dialog
    OnDialogClosed = RunnerDialogClosed
  end
end
