object ScriptsPage: TScriptsPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Any script, any scale'
  Hint = 
    'Texts in every script, in the dialog and in what is docked, at t' +
    'he resolution of the screen.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object TextsGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 272
    Height = 143
    Caption = 'Texts of the dialog'
    TabOrder = 0
    object TitleLabel: TLabel
      Left = 16
      Top = 28
      Width = 92
      Height = 13
      Caption = '&Title:'
      FocusControl = TitleEdit
    end
    object TitleEdit: TEdit
      Left = 112
      Top = 24
      Width = 144
      Height = 21
      TabOrder = 0
      Text = #1042#1099#1073#1077#1088#1080#1090#1077' '#1092#1072#1081#1083
    end
    object OkLabel: TLabel
      Left = 16
      Top = 55
      Width = 92
      Height = 13
      Caption = 'O&K button:'
      FocusControl = OkEdit
    end
    object OkEdit: TEdit
      Left = 112
      Top = 51
      Width = 144
      Height = 21
      TabOrder = 1
      Text = '&'#1054#1090#1082#1088#1099#1090#1100
    end
    object CancelLabel: TLabel
      Left = 16
      Top = 82
      Width = 92
      Height = 13
      Caption = '&Cancel button:'
      FocusControl = CancelEdit
    end
    object CancelEdit: TEdit
      Left = 112
      Top = 78
      Width = 144
      Height = 21
      TabOrder = 2
      Text = '&'#1057#1082#1072#1089#1091#1074#1072#1090#1080
    end
    object NameLabel: TLabel
      Left = 16
      Top = 109
      Width = 92
      Height = 13
      Caption = 'File &name:'
      FocusControl = NameEdit
    end
    object NameEdit: TEdit
      Left = 112
      Top = 105
      Width = 144
      Height = 21
      TabOrder = 3
      Text = '&N'#225'zev souboru:'
    end
  end
  object NoteGroup: TGroupBox
    Left = 300
    Top = 16
    Width = 476
    Height = 143
    Anchors = [akLeft, akTop, akRight]
    Caption = 'A note, docked below the files'
    TabOrder = 1
    object NoteMemo: TMemo
      Left = 16
      Top = 24
      Width = 444
      Height = 102
      Anchors = [akLeft, akTop, akRight, akBottom]
      Lines.Strings = (
        #1047#1076#1088#1072#1074#1089#1090#1074#1091#1081', '#1084#1080#1088'! '#915#949#953#940' '#963#959#965' '#922#972#963#956#949'!'
        #1605#1585#1581#1576#1575' '#1576#1575#1604#1593#1575#1604#1605
        'P'#345#237'li'#353' '#382'lu'#357'ou'#269'k'#253' k'#367#328', Gr'#246#223'e, '#285'is!')
      TabOrder = 0
    end
  end
  object ScaleLabel: TLabel
    Left = 300
    Top = 178
    Width = 476
    Height = 13
  end
  object OpenButton: TButton
    Left = 16
    Top = 172
    Width = 96
    Height = 25
    Caption = '&Open...'
    Default = True
    TabOrder = 2
    OnClick = OpenButtonClick
  end
  object Dialog: TKxOpenDialog
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
    Options = [ofHideReadOnly, ofEnableSizing, ofNoChangeDir]
    CustDlgParams.BottomFormName = 'NoteForm'
    CustDlgParams.Position = dpMainFormCenter
    OnSelectionChange = DialogSelectionChange
  end
end
