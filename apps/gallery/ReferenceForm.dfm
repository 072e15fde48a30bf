object ReferenceForm: TReferenceForm
  Left = 0
  Top = 0
  ClientWidth = 240
  ClientHeight = 120
  BorderStyle = bsToolWindow
  Caption = 'Reference window'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  Position = poDesigned
  object TextLabel: TLabel
    Left = 12
    Top = 12
    Width = 216
    Height = 52
    Caption = 
      'Dialogs can be centred over this window. Move it and open the di' +
      'alog again.'
    AutoSize = False
    WordWrap = True
  end
end
