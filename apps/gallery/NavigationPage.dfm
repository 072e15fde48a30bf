object NavigationPage: TNavigationPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Navigation and vetoes'
  Hint = 
    'The dialog tells what the user does, and the program may forbid ' +
    'it before it happens.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object RefuseGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 312
    Height = 176
    Caption = 'Refuse'
    TabOrder = 0
    object UpLevelBox: TCheckBox
      Left = 16
      Top = 24
      Width = 280
      Height = 17
      Caption = 'Up one &level'
      TabOrder = 0
    end
    object DesktopBox: TCheckBox
      Left = 16
      Top = 48
      Width = 280
      Height = 17
      Caption = '&Desktop'
      TabOrder = 1
    end
    object LastFolderBox: TCheckBox
      Left = 16
      Top = 72
      Width = 280
      Height = 17
      Caption = '&Back to the folder before'
      TabOrder = 2
    end
    object NewFolderBox: TCheckBox
      Left = 16
      Top = 96
      Width = 280
      Height = 17
      Caption = '&New folder'
      TabOrder = 3
    end
    object NameBox: TCheckBox
      Left = 16
      Top = 120
      Width = 280
      Height = 17
      Caption = '&Entering a file name'
      TabOrder = 4
    end
    object CloseBox: TCheckBox
      Left = 16
      Top = 144
      Width = 280
      Height = 17
      Caption = '&Closing with OK'
      TabOrder = 5
    end
  end
  object MessagesGroup: TGroupBox
    Left = 16
    Top = 204
    Width = 312
    Height = 80
    Caption = 'Messages of the dialog window'
    TabOrder = 1
    object PinBox: TCheckBox
      Left = 16
      Top = 24
      Width = 280
      Height = 17
      Caption = 'The dialog cannot be &moved'
      TabOrder = 0
    end
    object CountBox: TCheckBox
      Left = 16
      Top = 48
      Width = 280
      Height = 17
      Caption = 'Co&unt the messages'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
  end
  object EventsGroup: TGroupBox
    Left = 340
    Top = 16
    Width = 420
    Height = 268
    Anchors = [akLeft, akTop, akRight]
    Caption = 'Events of the last dialog'
    TabOrder = 2
    object EventList: TListBox
      Left = 16
      Top = 24
      Width = 388
      Height = 228
      Anchors = [akLeft, akTop, akRight, akBottom]
      TabOrder = 0
    end
  end
  object OpenButton: TButton
    Left = 16
    Top = 300
    Width = 96
    Height = 25
    Caption = '&Open...'
    Default = True
    TabOrder = 3
    OnClick = OpenButtonClick
  end
  object Dialog: TKxOpenLiteDialog
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
    Options = [ofHideReadOnly, ofEnableSizing, ofNoChangeDir]
    CustDlgParams.Position = dpMainFormCenter
    CustDlgParams.RightFormName = 'EventLogForm'
    OnCanClose = DialogCanClose
    OnFolderChange = DialogFolderChange
    OnSelectionChange = DialogSelectionChange
    OnDesktopNavigate = DialogDesktopNavigate
    OnDesktopNavigating = DialogDesktopNavigating
    OnUpLevelNavigate = DialogUpLevelNavigate
    OnUpLevelNavigating = DialogUpLevelNavigating
    OnLastFolderNavigate = DialogLastFolderNavigate
    OnLastFolderNavigating = DialogLastFolderNavigating
    OnFolderCreating = DialogFolderCreating
    OnFilenameChange = DialogFilenameChange
    OnFilenameEntering = DialogFilenameEntering
    OnEventHook = DialogEventHook
    OnEventHooking = DialogEventHooking
  end
end
