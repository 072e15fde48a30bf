object MainForm: TMainForm
  Left = 0
  Top = 0
  Caption = 'MainForm'
  ClientHeight = 300
  ClientWidth = 400
  Color = clBtnFace
  Font.Charset = DEFAULT_CHARSET
  Font.Color = clWindowText
  Font.Height = -11
  Font.Name = 'Tahoma'
  Font.Style = []
  PixelsPerInch = 96
  object Button1: TButton
    Left = 16
    Top = 16
    Width = 75
    Height = 25
    OnClick = Button1Click
    TabOrder = 0
    Caption = 'open'
  end
  object KxOpenDialog1: TKxOpenDialog
    OptionsEx = [ofExNoPlacesBar]
    Title = 'Open drawing'
    CustDlgParams.Position = dpScrCenter
    CustDlgParams.PosParams.ShiftX = 0
    CustDlgParams.PosParams.ShiftY = 0
    CustDlgParams.PosParams.FitToScreen = False
    CustDlgParams.RightFormName = 'PreviewForm'
    PlacesBar.Places = <>
    Left = 160
    Top = 80
  end
end
