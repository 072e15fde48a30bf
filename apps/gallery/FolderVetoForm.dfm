object FolderVetoForm: TFolderVetoForm
  Left = 0
  Top = 0
  ClientWidth = 560
  ClientHeight = 84
  BorderStyle = bsNone
  Caption = 'Vetoes'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object RefuseLabel: TLabel
    Left = 12
    Top = 10
    Width = 120
    Height = 13
    Caption = 'Refuse'
    Font.Height = -11
    Font.Name = 'MS Shell Dlg 2'
    Font.Style = [fsBold]
    ParentFont = False
  end
  object CloseBox: TCheckBox
    Left = 12
    Top = 30
    Width = 130
    Height = 17
    Caption = '&Closing with OK'
    TabOrder = 0
  end
  object MoveBox: TCheckBox
    Left = 12
    Top = 53
    Width = 130
    Height = 17
    Caption = '&Moving the dialog'
    TabOrder = 1
  end
  object EmptyBox: TCheckBox
    Left = 148
    Top = 30
    Width = 140
    Height = 17
    Caption = '&Folders without files'
    TabOrder = 2
  end
  object ShowLabel: TLabel
    Left = 300
    Top = 10
    Width = 120
    Height = 13
    Caption = 'Show'
    Font.Height = -11
    Font.Name = 'MS Shell Dlg 2'
    Font.Style = [fsBold]
    ParentFont = False
  end
  object ChoiceBox: TCheckBox
    Left = 300
    Top = 30
    Width = 240
    Height = 17
    Caption = 'A &list in place of the tree'
    TabOrder = 3
    OnClick = ChoiceBoxClick
  end
end
