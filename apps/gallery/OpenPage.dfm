object OpenPage: TOpenPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Open dialog, with everything'
  Hint = 
    'The program'#39's own places, tool bar, filter and button in the sys' +
    'tem'#39's dialog.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object ListGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 256
    Height = 232
    Caption = 'File list'
    TabOrder = 0
    object ViewLabel: TLabel
      Left = 16
      Top = 28
      Width = 60
      Height = 13
      Caption = '&View:'
      FocusControl = ViewCombo
    end
    object ViewCombo: TComboBox
      Left = 88
      Top = 24
      Width = 152
      Height = 21
      Style = csDropDownList
      Items.Strings = (
        'As the system shows it'
        'Icons'
        'Small icons'
        'List'
        'Details'
        'Thumbnails'
        'Tiles')
      ItemIndex = 0
      TabOrder = 0
    end
    object GridBox: TCheckBox
      Left = 16
      Top = 56
      Width = 228
      Height = 17
      Caption = '&Grid lines (details)'
      TabOrder = 1
    end
    object RowBox: TCheckBox
      Left = 16
      Top = 79
      Width = 228
      Height = 17
      Caption = '&Whole rows are selected (details)'
      TabOrder = 2
    end
    object HotTrackBox: TCheckBox
      Left = 16
      Top = 102
      Width = 228
      Height = 17
      Caption = '&Mouse selects without a click'
      TabOrder = 3
    end
    object RenameBox: TCheckBox
      Left = 16
      Top = 125
      Width = 228
      Height = 17
      Caption = '&Names can be changed'
      Checked = True
      State = cbChecked
      TabOrder = 4
    end
    object DeleteBox: TCheckBox
      Left = 16
      Top = 148
      Width = 228
      Height = 17
      Caption = '&Delete key works'
      Checked = True
      State = cbChecked
      TabOrder = 5
    end
    object EmptyMenuBox: TCheckBox
      Left = 16
      Top = 171
      Width = 228
      Height = 17
      Caption = '&Empty area has a menu'
      Checked = True
      State = cbChecked
      TabOrder = 6
    end
    object FileMenuBox: TCheckBox
      Left = 16
      Top = 194
      Width = 228
      Height = 17
      Caption = '&Selected files have a menu'
      Checked = True
      State = cbChecked
      TabOrder = 7
    end
  end
  object FormsGroup: TGroupBox
    Left = 284
    Top = 16
    Width = 268
    Height = 104
    Caption = 'Docked forms'
    TabOrder = 1
    object PreviewBox: TCheckBox
      Left = 16
      Top = 24
      Width = 236
      Height = 17
      Caption = '&Right: a preview of the selected file'
      Checked = True
      State = cbChecked
      TabOrder = 0
    end
    object KindsBox: TCheckBox
      Left = 16
      Top = 47
      Width = 236
      Height = 17
      Caption = '&Top: kinds of files to show'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
    object EventsBox: TCheckBox
      Left = 16
      Top = 70
      Width = 236
      Height = 17
      Caption = '&Bottom: events, and vetoes'
      Checked = True
      State = cbChecked
      TabOrder = 2
    end
  end
  object BarsGroup: TGroupBox
    Left = 284
    Top = 132
    Width = 268
    Height = 132
    Caption = 'Bars and button'
    TabOrder = 2
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
    object LendBox: TCheckBox
      Left = 16
      Top = 56
      Width = 236
      Height = 17
      Caption = '&Lend the tool bar on the right'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
    object FlatBox: TCheckBox
      Left = 16
      Top = 79
      Width = 236
      Height = 17
      Caption = 'Fl&at buttons in the dialog'#39's tool bar'
      TabOrder = 2
    end
    object MenuBox: TCheckBox
      Left = 16
      Top = 102
      Width = 236
      Height = 17
      Caption = 'O&K button with a menu'
      Checked = True
      State = cbChecked
      TabOrder = 3
    end
  end
  object ToolBarGroup: TGroupBox
    Left = 564
    Top = 16
    Width = 212
    Height = 68
    Caption = 'A tool bar of the program'
    TabOrder = 3
    object ViewBar: TToolBar
      Left = 16
      Top = 26
      Width = 24
      Height = 24
      Align = alNone
      ButtonHeight = 22
      ButtonWidth = 23
      EdgeBorders = []
      EdgeInner = esNone
      EdgeOuter = esNone
      Flat = True
      ShowHint = True
      TabOrder = 0
      Wrapable = False
      object ViewsButton: TToolButton
        Left = 0
        Top = 0
        Caption = 'Views'
        DropdownMenu = ViewMenu
        Hint = 'Views'
        ImageIndex = 0
        OnClick = ViewsButtonClick
      end
    end
    object ViewBarLabel: TLabel
      Left = 52
      Top = 32
      Width = 148
      Height = 13
      Caption = 'A menu of views'
    end
  end
  object OpenButton: TButton
    Left = 16
    Top = 268
    Width = 96
    Height = 25
    Caption = '&Open...'
    Default = True
    TabOrder = 4
    OnClick = OpenButtonClick
  end
  object OpenMenu: TPopupMenu
    object OpenItem: TMenuItem
      Caption = 'Open'
      OnClick = OpenItemClick
    end
    object ReadOnlyItem: TMenuItem
      Caption = 'Open read-only'
      OnClick = OpenItemClick
    end
    object CopyItem: TMenuItem
      Caption = 'Open a copy'
      OnClick = OpenItemClick
    end
  end
  object ViewMenu: TPopupMenu
    object IconsItem: TMenuItem
      Caption = 'Icons'
      Tag = 0
      OnClick = ViewItemClick
    end
    object SmallIconsItem: TMenuItem
      Caption = 'Small icons'
      Tag = 1
      OnClick = ViewItemClick
    end
    object ListItem: TMenuItem
      Caption = 'List'
      Tag = 2
      OnClick = ViewItemClick
    end
    object DetailsItem: TMenuItem
      Caption = 'Details'
      Tag = 3
      OnClick = ViewItemClick
    end
  end
  object Dialog: TKxOpenDialog
    Filter = 'All files|*.*|Pictures|*.bmp;*.ico|Texts|*.txt'
    Options = [ofHideReadOnly, ofEnableSizing, ofNoChangeDir]
    CustDlgParams.Position = dpMainFormCenter
    OnShow = DialogShow
    OnIncludeFile = DialogIncludeFile
  end
end
