object FolderChoiceForm: TFolderChoiceForm
  Left = 0
  Top = 0
  ClientWidth = 270
  ClientHeight = 195
  BorderStyle = bsNone
  Caption = 'Folders'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object HeadingLabel: TLabel
    Left = 0
    Top = 2
    Width = 200
    Height = 13
    Caption = 'Sample &folders'
    FocusControl = FolderList
    Font.Height = -11
    Font.Name = 'MS Shell Dlg 2'
    Font.Style = [fsBold]
    ParentFont = False
  end
  object FolderList: TListBox
    Left = 0
    Top = 22
    Width = 270
    Height = 173
    Anchors = [akLeft, akTop, akRight, akBottom]
    TabOrder = 0
    OnClick = FolderListClick
  end
end
