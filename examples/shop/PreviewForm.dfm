object PreviewForm: TPreviewForm
  Left = 0
  Top = 0
  BorderStyle = bsNone
  Caption = 'PreviewForm'
  ClientHeight = 240
  ClientWidth = 200
  Color = clBtnFace
  Font.Charset = DEFAULT_CHARSET
  Font.Color = clWindowText
  Font.Height = -11
  Font.Name = 'Tahoma'
  Font.Style = []
  PixelsPerInch = 96
  object Image1: TImage
    Left = 8
    Top = 8
    Width = 160
    Height = 120
  end
  object Label1: TLabel
    Left = 8
    Top = 144
    Width = 59
    Height = 13
    Caption = 'no drawing'
  end
  object Label2: TLabel
    Left = 8
    Top = 168
    Width = 36
    Height = 13
    Caption = '0 bytes'
  end
end
