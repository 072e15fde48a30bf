object KxCollectionForm: TCollectionForm
  Left = 0
  Top = 0
  BorderIcons = [biSystemMenu]
  BorderStyle = bsSizeToolWin
  Caption = 'Items'
  ClientHeight = 240
  ClientWidth = 280
  Constraints.MinHeight = 190
  Constraints.MinWidth = 240
  Font.Height = -11
  Font.Name = 'Tahoma'
  KeyPreview = True
  PixelsPerInch = 96
  ShowHint = True
  OnClose = FormClose
  OnKeyDown = FormKeyDown
  object ItemList: TListBox
    Left = 8
    Top = 8
    Width = 176
    Height = 224
    Anchors = [akLeft, akTop, akRight, akBottom]
    MultiSelect = True
    TabOrder = 0
    OnClick = ItemListClick
  end
  object AddButton: TButton
    Left = 192
    Top = 8
    Width = 80
    Height = 25
    Hint = 'A new item at the end (Ins)'
    Anchors = [akTop, akRight]
    Caption = '&Add'
    TabOrder = 1
    OnClick = AddButtonClick
  end
  object DeleteButton: TButton
    Left = 192
    Top = 39
    Width = 80
    Height = 25
    Hint = 'Deletes the chosen items (Del)'
    Anchors = [akTop, akRight]
    Caption = '&Delete'
    TabOrder = 2
    OnClick = DeleteButtonClick
  end
  object UpButton: TButton
    Left = 192
    Top = 78
    Width = 80
    Height = 25
    Hint = 'Moves the chosen items up (Ctrl+Up)'
    Anchors = [akTop, akRight]
    Caption = 'Move &up'
    TabOrder = 3
    OnClick = UpButtonClick
  end
  object DownButton: TButton
    Left = 192
    Top = 109
    Width = 80
    Height = 25
    Hint = 'Moves the chosen items down (Ctrl+Down)'
    Anchors = [akTop, akRight]
    Caption = 'Move do&wn'
    TabOrder = 4
    OnClick = DownButtonClick
  end
end
