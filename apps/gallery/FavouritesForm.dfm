object FavouritesForm: TFavouritesForm
  Left = 0
  Top = 0
  ClientWidth = 152
  ClientHeight = 320
  BorderStyle = bsNone
  Caption = 'Favourites'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object HeadingLabel: TLabel
    Left = 12
    Top = 12
    Width = 128
    Height = 13
    Caption = '&Favourites'
    FocusControl = FolderList
    Font.Height = -11
    Font.Name = 'MS Shell Dlg 2'
    Font.Style = [fsBold]
    ParentFont = False
  end
  object FolderList: TListBox
    Left = 12
    Top = 32
    Width = 136
    Height = 240
    Anchors = [akLeft, akTop, akRight, akBottom]
    TabOrder = 0
    OnClick = FolderListClick
  end
  object AddButton: TButton
    Left = 12
    Top = 284
    Width = 136
    Height = 25
    Anchors = [akLeft, akRight, akBottom]
    Caption = '&Add this folder'
    TabOrder = 1
    OnClick = AddButtonClick
  end
end
