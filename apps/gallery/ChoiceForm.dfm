object ChoiceForm: TChoiceForm
  Left = 0
  Top = 0
  ClientWidth = 224
  ClientHeight = 256
  BorderStyle = bsNone
  Caption = 'Choices'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object RefuseLabel: TLabel
    Left = 12
    Top = 12
    Width = 120
    Height = 13
    Caption = 'Refuse'
    Font.Height = -11
    Font.Name = 'MS Shell Dlg 2'
    Font.Style = [fsBold]
    ParentFont = False
  end
  object FirstBox: TCheckBox
    Left = 12
    Top = 32
    Width = 200
    Height = 17
    TabOrder = 0
  end
  object SecondBox: TCheckBox
    Left = 12
    Top = 55
    Width = 200
    Height = 17
    TabOrder = 1
  end
  object CloseBox: TCheckBox
    Left = 12
    Top = 78
    Width = 200
    Height = 17
    Caption = 'Closin&g with OK'
    TabOrder = 2
  end
  object LogPanel: TPanel
    Left = 8
    Top = 96
    Width = 216
    Height = 160
    Anchors = [akLeft, akTop, akRight, akBottom]
    BevelOuter = bvNone
    Caption = ''
    TabOrder = 3
  end
end
