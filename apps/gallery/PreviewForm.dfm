object PreviewForm: TPreviewForm
  Left = 0
  Top = 0
  ClientWidth = 248
  ClientHeight = 320
  BorderStyle = bsNone
  Caption = 'Preview'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object NameLabel: TLabel
    Left = 4
    Top = 12
    Width = 232
    Height = 13
    Caption = 'Preview'
    Anchors = [akLeft, akTop, akRight]
    AutoSize = False
    Font.Height = -11
    Font.Name = 'MS Shell Dlg 2'
    Font.Style = [fsBold]
    ParentFont = False
    ShowAccelChar = False
  end
  object PictureView: TPictureView
    Left = 4
    Top = 32
    Width = 232
    Height = 232
    Anchors = [akLeft, akTop, akRight, akBottom]
  end
  object TextMemo: TMemo
    Left = 4
    Top = 32
    Width = 232
    Height = 232
    Anchors = [akLeft, akTop, akRight, akBottom]
    ReadOnly = True
    ScrollBars = ssVertical
    TabOrder = 0
    Visible = False
  end
  object SizeCaption: TLabel
    Left = 4
    Top = 276
    Width = 52
    Height = 13
    Caption = 'Size:'
    Anchors = [akLeft, akBottom]
  end
  object SizeLabel: TLabel
    Left = 64
    Top = 276
    Width = 172
    Height = 13
    Caption = ''
    Anchors = [akLeft, akRight, akBottom]
    AutoSize = False
  end
  object DateCaption: TLabel
    Left = 4
    Top = 294
    Width = 52
    Height = 13
    Caption = 'Modified:'
    Anchors = [akLeft, akBottom]
  end
  object DateLabel: TLabel
    Left = 64
    Top = 294
    Width = 172
    Height = 13
    Caption = ''
    Anchors = [akLeft, akRight, akBottom]
    AutoSize = False
  end
end
