object OptionsForm: TOptionsForm
  Left = 0
  Top = 0
  ClientWidth = 320
  ClientHeight = 33
  BorderStyle = bsNone
  Caption = 'Options'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object CopyBox: TCheckBox
    Left = 8
    Top = 8
    Width = 240
    Height = 17
    Caption = 'Open a &copy, and leave the file as it is'
    TabOrder = 0
  end
  object OpenMenu: TPopupMenu
    object CopyItem: TMenuItem
      Caption = 'Load a &copy'
      OnClick = CopyItemClick
    end
  end
end
