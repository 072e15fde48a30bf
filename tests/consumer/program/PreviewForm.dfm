object PreviewForm: TPreviewForm
  Left = 0
  Top = 0
  ClientWidth = 200
  ClientHeight = 300
  BorderStyle = bsNone
  Caption = 'Preview'
  object HeadingLabel: TLabel
    Left = 8
    Top = 12
    Width = 72
    Height = 13
    Caption = 'From the form file'
  end
end
