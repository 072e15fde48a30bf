object AllControlsForm: TAllControlsForm
  Left = 120
  Top = 90
  ActiveControl = Edit1
  Caption = 'All controls'
  ClientHeight = 372
  ClientWidth = 560
  Color = clBtnFace
  Font.Charset = DEFAULT_CHARSET
  Font.Color = clWindowText
  Font.Height = -11
  Font.Name = 'MS Sans Serif'
  Font.Style = []
  OldCreateOrder = False
  ShowHint = True
  OnCreate = FormCreate
  OnDestroy = FormDestroy
  OnShow = FormShow
  PixelsPerInch = 96
  TextHeight = 13
  object Label1: TLabel
    Left = 8
    Top = 12
    Width = 28
    Height = 13
    Caption = '&Titel:'
    FocusControl = Edit1
  end
  object Bevel1: TBevel
    Left = 8
    Top = 330
    Width = 544
    Height = 6
    Anchors = [akLeft, akRight, akBottom]
    Shape = bsTopLine
  end
  object PaintBox1: TPaintBox
    Left = 500
    Top = 8
    Width = 52
    Height = 52
    Anchors = [akTop, akRight]
    OnPaint = PaintBox1Paint
  end
  object Edit1: TEdit
    Left = 56
    Top = 8
    Width = 150
    Height = 21
    Hint = 'Titel|Der Titel des Eintrags'
    TabOrder = 0
    Text = #220'bersicht'
  end
  object CheckBox1: TCheckBox
    Left = 216
    Top = 10
    Width = 120
    Height = 17
    Caption = '&Auto. Titel'
    State = cbChecked
    TabOrder = 1
  end
  object Memo1: TMemo
    Left = 8
    Top = 36
    Width = 198
    Height = 73
    Lines.Strings = (
      'eins'
      'zwei')
    TabOrder = 2
  end
  object GroupBox1: TGroupBox
    Left = 216
    Top = 36
    Width = 150
    Height = 73
    Caption = '&Group'
    TabOrder = 3
    object RadioButton1: TRadioButton
      Left = 12
      Top = 20
      Width = 113
      Height = 17
      Caption = '&First'
      Checked = True
      TabOrder = 0
      TabStop = True
    end
    object RadioButton2: TRadioButton
      Left = 12
      Top = 44
      Width = 113
      Height = 17
      Caption = '&Second'
      TabOrder = 1
    end
  end
  object ListBox1: TListBox
    Left = 376
    Top = 8
    Width = 113
    Height = 101
    Items.Strings = (
      'one'
      'two'
      'three')
    PopupMenu = PopupMenu1
    TabOrder = 4
  end
  object ComboBox1: TComboBox
    Left = 8
    Top = 116
    Width = 198
    Height = 21
    TabOrder = 5
    Text = 'free text'
    Items.Strings = (
      'alpha'
      'beta')
  end
  object ComboBox2: TComboBox
    Left = 216
    Top = 116
    Width = 150
    Height = 21
    Style = csDropDownList
    TabOrder = 6
    Items.Strings = (
      'alpha'
      'beta'
      'gamma')
    ItemIndex = 1
  end
  object Panel1: TPanel
    Left = 376
    Top = 116
    Width = 176
    Height = 40
    BevelInner = bvLowered
    Caption = 'Panel'
    TabOrder = 7
  end
  object TabControl1: TTabControl
    Left = 8
    Top = 160
    Width = 544
    Height = 160
    Anchors = [akLeft, akTop, akRight, akBottom]
    TabOrder = 8
    Tabs.Strings = (
      'Durchsuchen'
      'Zuletzt verwendet')
    TabIndex = 0
    object ListView1: TListView
      Left = 8
      Top = 28
      Width = 520
      Height = 120
      Align = alClient
      Columns = <
        item
          Caption = 'Datei'
          Width = 110
        end
        item
          Caption = 'Verzeichnis'
          Width = 250
        end>
      ReadOnly = True
      RowSelect = True
      TabOrder = 0
      ViewStyle = vsReport
    end
  end
  object SpeedButton1: TSpeedButton
    Left = 8
    Top = 340
    Width = 60
    Height = 25
    Anchors = [akLeft, akBottom]
    GroupIndex = 1
    Down = True
    Caption = 'Speed'
    Flat = True
    Margin = 4
  end
  object DrawGrid1: TDrawGrid
    Left = 76
    Top = 338
    Width = 129
    Height = 30
    Anchors = [akLeft, akBottom]
    ColCount = 12
    DefaultColWidth = 20
    DefaultRowHeight = 10
    FixedCols = 0
    RowCount = 1
    FixedRows = 0
    Options = [goVertLine, goHorzLine, goDrawFocusSelected, goThumbTracking]
    ScrollBars = ssHorizontal
    TabOrder = 11
    TabStop = False
  end
  object PageScroller1: TPageScroller
    Left = 212
    Top = 338
    Width = 100
    Height = 29
    Anchors = [akLeft, akBottom]
    AutoScroll = False
    Control = ToolBar1
    Orientation = soVertical
    TabOrder = 12
    object ToolBar1: TToolBar
      Left = 0
      Top = 0
      Width = 100
      Height = 66
      AutoSize = True
      ButtonHeight = 22
      ButtonWidth = 87
      EdgeBorders = []
      Flat = True
      PopupMenu = PopupMenu1
      TabOrder = 0
      object ToolButton1: TToolButton
        Left = 0
        Top = 0
        Caption = 'First'
        Grouped = True
        Style = tbsCheck
      end
      object ToolButton2: TToolButton
        Left = 0
        Top = 22
        Caption = 'Second'
        Down = True
        Grouped = True
        Style = tbsCheck
      end
    end
  end
  object OkButton: TButton
    Left = 396
    Top = 340
    Width = 75
    Height = 25
    Anchors = [akRight, akBottom]
    Caption = 'OK'
    Default = True
    ModalResult = 1
    TabOrder = 9
    OnClick = OkButtonClick
  end
  object CancelButton: TButton
    Left = 477
    Top = 340
    Width = 75
    Height = 25
    Anchors = [akRight, akBottom]
    Cancel = True
    Caption = 'Abbrechen'
    ModalResult = mrCancel
    TabOrder = 10
  end
  object PopupMenu1: TPopupMenu
    object Item1: TMenuItem
      Caption = '&Item'
      OnClick = Item1Click
    end
  end
end
