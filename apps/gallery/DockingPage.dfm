object DockingPage: TDockingPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Docking and placement'
  Hint = 
    'Forms of the application become part of the dialog, which shows ' +
    'where the program wants it.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object FormsGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 312
    Height = 128
    Caption = 'Docked forms'
    TabOrder = 0
    object LeftBox: TCheckBox
      Left = 16
      Top = 24
      Width = 280
      Height = 17
      Caption = '&Left: favourite folders'
      Checked = True
      State = cbChecked
      TabOrder = 0
      OnClick = SideClick
    end
    object TopBox: TCheckBox
      Left = 16
      Top = 48
      Width = 280
      Height = 17
      Caption = '&Top: a filter for the names shown'
      Checked = True
      State = cbChecked
      TabOrder = 1
      OnClick = SideClick
    end
    object RightBox: TCheckBox
      Left = 16
      Top = 72
      Width = 280
      Height = 17
      Caption = '&Right: a preview of the selected file'
      Checked = True
      State = cbChecked
      TabOrder = 2
      OnClick = SideClick
    end
    object BottomBox: TCheckBox
      Left = 16
      Top = 96
      Width = 280
      Height = 17
      Caption = '&Bottom: encoding of texts, access'
      Checked = True
      State = cbChecked
      TabOrder = 3
      OnClick = SideClick
    end
  end
  object PlacementGroup: TGroupBox
    Left = 16
    Top = 156
    Width = 312
    Height = 164
    Caption = 'Placement'
    TabOrder = 1
    object PositionLabel: TLabel
      Left = 16
      Top = 28
      Width = 60
      Height = 13
      Caption = '&Position:'
      FocusControl = PositionCombo
    end
    object PositionCombo: TComboBox
      Left = 104
      Top = 24
      Width = 192
      Height = 21
      Style = csDropDownList
      Items.Strings = (
        'Where the system puts it'
        'Centre of the screen'
        'Centre of the main window'
        'Centre of this page'
        'Centre of the reference window')
      ItemIndex = 0
      TabOrder = 0
      OnChange = PositionChange
    end
    object ShiftXLabel: TLabel
      Left = 16
      Top = 56
      Width = 80
      Height = 13
      Caption = '&Shift to the right:'
      FocusControl = ShiftXEdit
    end
    object ShiftXEdit: TEdit
      Left = 104
      Top = 52
      Width = 48
      Height = 21
      TabOrder = 1
      Text = '0'
    end
    object ShiftYLabel: TLabel
      Left = 168
      Top = 56
      Width = 40
      Height = 13
      Caption = '&down:'
      FocusControl = ShiftYEdit
    end
    object ShiftYEdit: TEdit
      Left = 208
      Top = 52
      Width = 48
      Height = 21
      TabOrder = 2
      Text = '0'
    end
    object PixelsLabel: TLabel
      Left = 264
      Top = 56
      Width = 32
      Height = 13
      Caption = 'pixels'
    end
    object FitBox: TCheckBox
      Left = 16
      Top = 84
      Width = 280
      Height = 17
      Caption = '&Fit to the screen'
      Checked = True
      State = cbChecked
      TabOrder = 3
    end
    object ReferenceBox: TCheckBox
      Left = 16
      Top = 108
      Width = 280
      Height = 17
      Caption = 'Show the r&eference window'
      TabOrder = 4
      OnClick = ReferenceClick
    end
    object PlacesBox: TCheckBox
      Left = 16
      Top = 132
      Width = 280
      Height = 17
      Caption = 'The system'#39's places b&ar'
      Checked = True
      State = cbChecked
      TabOrder = 5
    end
  end
  object SketchGroup: TGroupBox
    Left = 340
    Top = 16
    Width = 420
    Height = 304
    Anchors = [akLeft, akTop, akRight]
    Caption = 'Arrangement'
    TabOrder = 2
    object Sketch: TDockSketch
      Left = 16
      Top = 24
      Width = 388
      Height = 264
      Anchors = [akLeft, akTop, akRight, akBottom]
    end
  end
  object OpenButton: TButton
    Left = 16
    Top = 336
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
    Title = 'Open a sample'
    CustDlgParams.PosParams.FormName = 'ReferenceForm'
    OnFolderChange = DialogFolderChange
    OnSelectionChange = DialogSelectionChange
  end
end
