object KxDesigner: TDesignerForm
  Left = 0
  Top = 0
  ClientHeight = 720
  ClientWidth = 1180
  Caption = 'Form designer'
  Constraints.MinHeight = 560
  Constraints.MinWidth = 640
  Font.Height = -11
  Font.Name = 'Tahoma'
  KeyPreview = True
  Menu = MainMenu
  PixelsPerInch = 96
  Position = poScreenCenter
  ShowHint = True
  OnCloseQuery = FormCloseQuery
  OnResize = PanesResize
  OnShow = FormShow
  object Palette: TPaletteBar
    Left = 0
    Top = 0
    Width = 1180
    Height = 66
    Align = alTop
    BevelOuter = bvNone
    TabOrder = 0
  end
  object StatusPanel: TPanel
    Left = 0
    Top = 698
    Width = 1180
    Height = 22
    Align = alBottom
    Alignment = taLeftJustify
    BevelOuter = bvLowered
    TabOrder = 1
  end
  object LeftPanel: TPanel
    Left = 0
    Top = 66
    Width = 290
    Height = 632
    Align = alLeft
    BevelOuter = bvNone
    BorderWidth = 3
    TabOrder = 2
    OnResize = PanesResize
    object ProjectLabel: TLabel
      Left = 3
      Top = 3
      Width = 284
      Height = 16
      Align = alTop
      AutoSize = False
      Caption = 'Project'
      FocusControl = ProjectList
      Layout = tlCenter
    end
    object ProjectList: TListBox
      Left = 3
      Top = 19
      Width = 284
      Height = 80
      Align = alTop
      TabOrder = 0
      OnClick = ProjectListClick
    end
    object ProjectSplitter: TSplitter
      Left = 3
      Top = 99
      Width = 284
      Height = 4
      Cursor = crVSplit
      Align = alTop
      ResizeStyle = rsUpdate
    end
    object StructureLabel: TLabel
      Left = 3
      Top = 103
      Width = 284
      Height = 18
      Align = alTop
      AutoSize = False
      Caption = 'Structure'
      FocusControl = Structure
      Layout = tlCenter
    end
    object Structure: TStructure
      Left = 3
      Top = 121
      Width = 284
      Height = 150
      Align = alTop
      TabOrder = 1
    end
    object StructureSplitter: TSplitter
      Left = 3
      Top = 271
      Width = 284
      Height = 4
      Cursor = crVSplit
      Align = alTop
      ResizeStyle = rsUpdate
    end
    object Inspector: TInspector
      Left = 3
      Top = 275
      Width = 284
      Height = 354
      Align = alClient
      BevelOuter = bvNone
      TabOrder = 2
    end
  end
  object LeftSplitter: TSplitter
    Left = 290
    Top = 66
    Width = 4
    Height = 632
    Align = alLeft
    ResizeStyle = rsUpdate
  end
  object ViewPanel: TPanel
    Left = 294
    Top = 66
    Width = 886
    Height = 632
    Align = alClient
    BevelOuter = bvNone
    TabOrder = 3
    object FormTabs: TTabControl
      Left = 0
      Top = 0
      Width = 886
      Height = 24
      Align = alTop
      TabOrder = 0
      OnChange = FormTabsChange
    end
    object ViewTabs: TTabControl
      Left = 0
      Top = 608
      Width = 886
      Height = 24
      Align = alBottom
      TabOrder = 2
      Tabs.Strings = (
        'Form'
        'Text'
        'Class')
      OnChange = ViewTabsChange
    end
    object Surface: TDesignSurface
      Left = 0
      Top = 24
      Width = 886
      Height = 584
      Align = alClient
      TabOrder = 1
    end
    object ClassPanel: TPanel
      Left = 0
      Top = 24
      Width = 886
      Height = 32
      Align = alTop
      BevelOuter = bvNone
      TabOrder = 3
      Visible = False
      object ClassLabel: TLabel
        Left = 8
        Top = 9
        Width = 636
        Height = 16
        Anchors = [akLeft, akTop, akRight]
        AutoSize = False
        ShowAccelChar = False
      end
      object CopyClassButton: TButton
        Left = 660
        Top = 4
        Width = 104
        Height = 24
        Hint = 'Copies the code below'
        Anchors = [akTop, akRight]
        Caption = 'C&opy'
        TabOrder = 0
        OnClick = CommandClick
      end
      object WriteClassButton: TButton
        Left = 772
        Top = 4
        Width = 104
        Height = 24
        Hint = 
          'Writes the class to files beside the form file, or completes it ' +
          'there'
        Anchors = [akTop, akRight]
        Caption = '&Write to files'
        TabOrder = 1
        OnClick = CommandClick
      end
    end
    object TextMemo: TMemo
      Left = 0
      Top = 24
      Width = 886
      Height = 584
      Align = alClient
      Font.Height = -13
      Font.Name = 'Courier New'
      ParentFont = False
      ScrollBars = ssBoth
      TabOrder = 4
      Visible = False
      WantTabs = True
      WordWrap = False
      OnExit = TextMemoExit
    end
  end
  object MainMenu: TMainMenu
    Left = 330
    Top = 110
    object FileMenu: TMenuItem
      Caption = '&File'
      OnClick = MenuOpens
      object NewProjectItem: TMenuItem
        Caption = 'New &project...'
        OnClick = CommandClick
      end
      object NewFormItem: TMenuItem
        Caption = '&New form...'
        ShortCut = 16462
        OnClick = CommandClick
      end
      object NewDialogItem: TMenuItem
        Caption = 'New &dialog...'
        OnClick = CommandClick
      end
      object NewDockedFormItem: TMenuItem
        Caption = 'New form &beside a dialog...'
        OnClick = CommandClick
      end
      object OpenFileItem: TMenuItem
        Caption = '&Open...'
        ShortCut = 16463
        OnClick = CommandClick
      end
      object RecentMenu: TMenuItem
        Caption = '&Recent'
      end
      object FileMenuLine1: TMenuItem
        Caption = '-'
      end
      object SaveItem: TMenuItem
        Caption = '&Save'
        ShortCut = 16467
        OnClick = CommandClick
      end
      object SaveAsItem: TMenuItem
        Caption = 'Save &as...'
        OnClick = CommandClick
      end
      object SaveAllItem: TMenuItem
        Caption = 'Save a&ll'
        ShortCut = 24659
        OnClick = CommandClick
      end
      object CloseFormItem: TMenuItem
        Caption = '&Close'
        ShortCut = 16499
        OnClick = CommandClick
      end
      object FileMenuLine2: TMenuItem
        Caption = '-'
      end
      object MainFormItem: TMenuItem
        Caption = '&Main form of the project'
        OnClick = CommandClick
      end
      object RemoveFormItem: TMenuItem
        Caption = 'Remo&ve from the project'
        OnClick = CommandClick
      end
      object FileMenuLine3: TMenuItem
        Caption = '-'
      end
      object ExitItem: TMenuItem
        Caption = 'E&xit'
        OnClick = CommandClick
      end
    end
    object EditMenu: TMenuItem
      Caption = '&Edit'
      OnClick = MenuOpens
      object UndoItem: TMenuItem
        Caption = '&Undo'
        ShortCut = 16474
        OnClick = CommandClick
      end
      object RedoItem: TMenuItem
        Caption = '&Redo'
        ShortCut = 16473
        OnClick = CommandClick
      end
      object EditMenuLine1: TMenuItem
        Caption = '-'
      end
      object CutItem: TMenuItem
        Caption = 'Cu&t'
        ShortCut = 16472
        OnClick = CommandClick
      end
      object CopyItem: TMenuItem
        Caption = '&Copy'
        ShortCut = 16451
        OnClick = CommandClick
      end
      object PasteItem: TMenuItem
        Caption = '&Paste'
        ShortCut = 16470
        OnClick = CommandClick
      end
      object DeleteItem: TMenuItem
        Caption = '&Delete'
        ShortCut = 46
        OnClick = CommandClick
      end
      object EditMenuLine2: TMenuItem
        Caption = '-'
      end
      object SelectAllItem: TMenuItem
        Caption = 'Select &all'
        ShortCut = 16449
        OnClick = CommandClick
      end
      object SelectParentItem: TMenuItem
        Caption = 'Select par&ent'
        OnClick = CommandClick
      end
      object EditMenuLine3: TMenuItem
        Caption = '-'
      end
      object BringToFrontItem: TMenuItem
        Caption = 'Bring to &front'
        OnClick = CommandClick
      end
      object SendToBackItem: TMenuItem
        Caption = 'Send to &back'
        OnClick = CommandClick
      end
      object EditMenuLine4: TMenuItem
        Caption = '-'
      end
      object LockControlsItem: TMenuItem
        Caption = '&Lock controls'
        OnClick = CommandClick
      end
    end
    object ViewMenu: TMenuItem
      Caption = '&View'
      OnClick = MenuOpens
      object ViewFormItem: TMenuItem
        Caption = '&Form'
        ShortCut = 123
        OnClick = CommandClick
      end
      object ViewTextItem: TMenuItem
        Caption = '&Text'
        ShortCut = 32891
        OnClick = CommandClick
      end
      object ViewClassItem: TMenuItem
        Caption = '&Class'
        OnClick = CommandClick
      end
      object ViewMenuLine1: TMenuItem
        Caption = '-'
      end
      object CopyClassItem: TMenuItem
        Caption = 'C&opy the class'
        OnClick = CommandClick
      end
      object WriteClassItem: TMenuItem
        Caption = '&Write the class to files...'
        OnClick = CommandClick
      end
      object ViewMenuLine3: TMenuItem
        Caption = '-'
      end
      object ShowInspectorItem: TMenuItem
        Caption = '&Inspector'
        ShortCut = 122
        OnClick = CommandClick
      end
      object FindComponentItem: TMenuItem
        Caption = 'Find co&mponent'
        OnClick = CommandClick
      end
      object ViewMenuLine2: TMenuItem
        Caption = '-'
      end
      object ShowGridItem: TMenuItem
        Caption = 'Show &grid'
        OnClick = CommandClick
      end
      object GridItem: TMenuItem
        Caption = 'Gri&d...'
        OnClick = CommandClick
      end
      object ShowGuidesItem: TMenuItem
        Caption = 'Show g&uide lines'
        OnClick = CommandClick
      end
      object ShowTabOrderItem: TMenuItem
        Caption = 'Show tab o&rder'
        OnClick = CommandClick
      end
    end
    object ArrangeMenu: TMenuItem
      Caption = '&Arrange'
      OnClick = MenuOpens
      object AlignLeftItem: TMenuItem
        Caption = 'Align &left edges'
        OnClick = CommandClick
      end
      object AlignRightItem: TMenuItem
        Caption = 'Align &right edges'
        OnClick = CommandClick
      end
      object AlignTopItem: TMenuItem
        Caption = 'Align &tops'
        OnClick = CommandClick
      end
      object AlignBottomItem: TMenuItem
        Caption = 'Align &bottoms'
        OnClick = CommandClick
      end
      object AlignMiddleItem: TMenuItem
        Caption = 'Align &vertical axes'
        OnClick = CommandClick
      end
      object AlignCenterItem: TMenuItem
        Caption = 'Align &horizontal axes'
        OnClick = CommandClick
      end
      object ArrangeMenuLine1: TMenuItem
        Caption = '-'
      end
      object CenterHorizontallyItem: TMenuItem
        Caption = 'Center hori&zontally'
        OnClick = CommandClick
      end
      object CenterVerticallyItem: TMenuItem
        Caption = 'Center verti&cally'
        OnClick = CommandClick
      end
      object ArrangeMenuLine2: TMenuItem
        Caption = '-'
      end
      object SpaceHorizontallyItem: TMenuItem
        Caption = '&Space horizontally'
        OnClick = CommandClick
      end
      object SpaceVerticallyItem: TMenuItem
        Caption = 'Space v&ertically'
        OnClick = CommandClick
      end
      object ArrangeMenuLine3: TMenuItem
        Caption = '-'
      end
      object SameWidthItem: TMenuItem
        Caption = 'Same &width'
        OnClick = CommandClick
      end
      object SameHeightItem: TMenuItem
        Caption = 'Same hei&ght'
        OnClick = CommandClick
      end
      object SameSizeItem: TMenuItem
        Caption = 'Sa&me size'
        OnClick = CommandClick
      end
      object ArrangeMenuLine4: TMenuItem
        Caption = '-'
      end
      object ToGridItem: TMenuItem
        Caption = 'To the gri&d'
        OnClick = CommandClick
      end
    end
    object RunMenu: TMenuItem
      Caption = '&Run'
      OnClick = MenuOpens
      object RunItem: TMenuItem
        Caption = '&Run the form'
        ShortCut = 120
        OnClick = CommandClick
      end
      object RunMenuLine1: TMenuItem
        Caption = '-'
      end
      object Run96Item: TMenuItem
        Caption = 'At 96 dots per inch'
        OnClick = CommandClick
      end
      object Run120Item: TMenuItem
        Caption = 'At 120 dots per inch'
        OnClick = CommandClick
      end
      object Run144Item: TMenuItem
        Caption = 'At 144 dots per inch'
        OnClick = CommandClick
      end
      object Run192Item: TMenuItem
        Caption = 'At 192 dots per inch'
        OnClick = CommandClick
      end
    end
    object HelpMenu: TMenuItem
      Caption = '&Help'
      OnClick = MenuOpens
      object KeysItem: TMenuItem
        Caption = '&Keys'
        OnClick = CommandClick
      end
      object AboutItem: TMenuItem
        Caption = '&About'
        OnClick = CommandClick
      end
    end
  end
  object FormMenu: TPopupMenu
    Left = 370
    Top = 110
  end
end
