object NoteForm: TNoteForm
  Left = 0
  Top = 0
  ClientWidth = 400
  ClientHeight = 112
  BorderStyle = bsNone
  Caption = 'Note'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object FileLabel: TLabel
    Left = 8
    Top = 8
    Width = 384
    Height = 13
    Anchors = [akLeft, akTop, akRight]
    AutoSize = False
  end
  object NoteMemo: TMemo
    Left = 8
    Top = 28
    Width = 384
    Height = 76
    Anchors = [akLeft, akTop, akRight, akBottom]
    TabOrder = 0
  end
end
