object KxLinesForm: TLinesForm
  Left = 0
  Top = 0
  BorderIcons = [biSystemMenu]
  Caption = 'Lines'
  ClientHeight = 320
  ClientWidth = 460
  Constraints.MinHeight = 200
  Constraints.MinWidth = 300
  Font.Height = -11
  Font.Name = 'Tahoma'
  PixelsPerInch = 96
  Position = poMainFormCenter
  object CountLabel: TLabel
    Left = 12
    Top = 10
    Width = 436
    Height = 13
    Caption = '&Lines'
    FocusControl = LinesMemo
  end
  object LinesMemo: TMemo
    Left = 12
    Top = 28
    Width = 436
    Height = 244
    Anchors = [akLeft, akTop, akRight, akBottom]
    ScrollBars = ssBoth
    TabOrder = 0
    WordWrap = False
    OnChange = LinesMemoChange
  end
  object OkButton: TButton
    Left = 292
    Top = 284
    Width = 75
    Height = 25
    Anchors = [akRight, akBottom]
    Caption = 'OK'
    Default = True
    ModalResult = 1
    TabOrder = 1
  end
  object CancelButton: TButton
    Left = 373
    Top = 284
    Width = 75
    Height = 25
    Anchors = [akRight, akBottom]
    Cancel = True
    Caption = 'Cancel'
    ModalResult = 2
    TabOrder = 2
  end
end
