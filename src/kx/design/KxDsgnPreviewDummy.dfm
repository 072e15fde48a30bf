object KxPreviewDummyFrm: TKxPreviewDummyFrm
  Left = 0
  Top = 0
  BorderIcons = [biSystemMenu]
  BorderStyle = bsDialog
  Caption = 'Preview'
  ClientHeight = 85
  ClientWidth = 281
  Color = clBtnFace
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  Position = poScreenCenter
  OnClose = FormClose
  object Label1: TLabel
    Left = 16
    Top = 12
    Width = 249
    Height = 29
    AutoSize = False
    Caption = 
      'The dialog will show as it does in the running program, with the' +
      ' forms that are open here.'
    WordWrap = True
  end
  object Button1: TButton
    Left = 103
    Top = 50
    Width = 75
    Height = 25
    Caption = '&Preview'
    Default = True
    TabOrder = 0
    OnClick = Button1Click
  end
end
