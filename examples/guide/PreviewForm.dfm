object PreviewForm: TPreviewForm
  Left = 0
  Top = 0
  ClientWidth = 176
  ClientHeight = 240
  BorderStyle = bsNone
  Caption = 'Preview'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object DrawingImage: TImage
    Left = 8
    Top = 8
    Width = 160
    Height = 160
    Center = True
    Proportional = True
    Stretch = True
  end
  object NameLabel: TLabel
    Left = 8
    Top = 176
    Width = 160
    Height = 40
    AutoSize = False
    Caption = 'Nothing selected'
    WordWrap = True
  end
end
