object PlacesPage: TPlacesPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Places bar'
  Hint = 
    'A place leads to its folder. Its menu changes it, dragging moves' +
    ' it, dropped folders become places.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object BarPanel: TPanel
    Left = 16
    Top = 16
    Width = 96
    Height = 344
    Anchors = [akLeft, akTop, akBottom]
    BevelOuter = bvNone
    Caption = ''
    TabOrder = 0
  end
  object FolderLabel: TLabel
    Left = 128
    Top = 20
    Width = 64
    Height = 13
    Caption = '&Folder:'
    FocusControl = FolderBox
  end
  object FolderBox: TLookInBox
    Left = 200
    Top = 16
    Width = 472
    Height = 21
    Style = csDropDownList
    Anchors = [akLeft, akTop, akRight]
    TabOrder = 1
    OnClick = FolderBoxClick
  end
  object UpButton: TButton
    Left = 680
    Top = 14
    Width = 96
    Height = 25
    Anchors = [akTop, akRight]
    Caption = '&Up one level'
    TabOrder = 2
    OnClick = UpButtonClick
  end
  object FileList: TListView
    Left = 128
    Top = 48
    Width = 648
    Height = 274
    Anchors = [akLeft, akTop, akRight, akBottom]
    Columns = <
      item
        Caption = 'Name'
        Width = 380
      end
      item
        Alignment = taRightJustify
        Caption = 'Size'
        Width = 90
      end
      item
        Caption = 'Type'
        Width = 90
      end>
    HideSelection = False
    ReadOnly = True
    RowSelect = True
    TabOrder = 3
    ViewStyle = vsReport
    OnDblClick = OpenButtonClick
    OnSelectItem = FileListSelectItem
  end
  object NameLabel: TLabel
    Left = 128
    Top = 339
    Width = 64
    Height = 13
    Anchors = [akLeft, akBottom]
    Caption = 'File &name:'
    FocusControl = NameEdit
  end
  object NameEdit: TEdit
    Left = 200
    Top = 335
    Width = 336
    Height = 21
    Anchors = [akLeft, akRight, akBottom]
    TabOrder = 4
  end
  object OpenButton: TButton
    Left = 544
    Top = 333
    Width = 96
    Height = 25
    Anchors = [akRight, akBottom]
    Caption = '&Open'
    Default = True
    TabOrder = 5
    OnClick = OpenButtonClick
  end
  object ResetButton: TButton
    Left = 648
    Top = 333
    Width = 128
    Height = 25
    Anchors = [akRight, akBottom]
    Caption = '&Reset the places'
    TabOrder = 6
    OnClick = ResetButtonClick
  end
end
