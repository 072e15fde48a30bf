object RecentPage: TRecentPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Open dialog with recent files'
  Hint = 
    'A second tab lists the files that were opened last; the registry' +
    ' keeps them.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object TabsGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 272
    Height = 116
    Caption = 'Tabs'
    TabOrder = 0
    object BrowseLabel: TLabel
      Left = 16
      Top = 28
      Width = 72
      Height = 13
      Caption = '&First tab:'
      FocusControl = BrowseEdit
    end
    object BrowseEdit: TEdit
      Left = 112
      Top = 24
      Width = 144
      Height = 21
      TabOrder = 0
      Text = 'Browse'
    end
    object RecentLabel: TLabel
      Left = 16
      Top = 55
      Width = 72
      Height = 13
      Caption = '&Second tab:'
      FocusControl = RecentEdit
    end
    object RecentEdit: TEdit
      Left = 112
      Top = 51
      Width = 144
      Height = 21
      TabOrder = 1
      Text = 'Recently used'
    end
    object BeginLabel: TLabel
      Left = 16
      Top = 82
      Width = 92
      Height = 13
      Caption = '&Begin with:'
      FocusControl = BeginCombo
    end
    object BeginCombo: TComboBox
      Left = 112
      Top = 78
      Width = 144
      Height = 21
      Style = csDropDownList
      Items.Strings = (
        'The first tab'
        'The second tab')
      ItemIndex = 0
      TabOrder = 2
    end
  end
  object FilesGroup: TGroupBox
    Left = 16
    Top = 144
    Width = 272
    Height = 108
    Caption = 'Recent files'
    TabOrder = 1
    object CountLabel: TLabel
      Left = 16
      Top = 28
      Width = 92
      Height = 13
      Caption = '&Keep at most:'
      FocusControl = CountEdit
    end
    object CountEdit: TEdit
      Left = 112
      Top = 24
      Width = 56
      Height = 21
      TabOrder = 0
      Text = '10'
    end
    object RememberBox: TCheckBox
      Left = 16
      Top = 54
      Width = 240
      Height = 17
      Caption = '&Remember a file that is opened'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
    object EventsBox: TCheckBox
      Left = 16
      Top = 77
      Width = 240
      Height = 17
      Caption = '&Dock events and vetoes below'
      Checked = True
      State = cbChecked
      TabOrder = 2
    end
  end
  object ListGroup: TGroupBox
    Left = 300
    Top = 16
    Width = 476
    Height = 236
    Anchors = [akLeft, akTop, akRight]
    Caption = 'In the registry'
    TabOrder = 2
    object FileList: TListBox
      Left = 16
      Top = 24
      Width = 444
      Height = 164
      Anchors = [akLeft, akTop, akRight, akBottom]
      TabOrder = 0
    end
    object ForgetButton: TButton
      Left = 364
      Top = 196
      Width = 96
      Height = 25
      Anchors = [akRight, akBottom]
      Caption = 'For&get them'
      TabOrder = 1
      OnClick = ForgetButtonClick
    end
  end
  object OpenButton: TButton
    Left = 16
    Top = 272
    Width = 96
    Height = 25
    Caption = '&Open...'
    Default = True
    TabOrder = 3
    OnClick = OpenButtonClick
  end
  object Dialog: TKxOpenDialogEx
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
    Options = [ofHideReadOnly, ofEnableSizing, ofNoChangeDir]
    CustDlgParams.Position = dpMainFormCenter
  end
end
