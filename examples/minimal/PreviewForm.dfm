object PreviewForm: TPreviewForm
  Left = 0
  Top = 0
  ClientWidth = 200
  ClientHeight = 300
  BorderStyle = bsNone
  Caption = 'Preview'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object HeadingLabel: TLabel
    Left = 8
    Top = 12
    Width = 72
    Height = 13
    Caption = 'Selected file:'
  end
  object NameLabel: TLabel
    Left = 8
    Top = 32
    Width = 184
    Height = 60
    Anchors = [akLeft, akTop, akRight]
    AutoSize = False
    WordWrap = True
  end
end
