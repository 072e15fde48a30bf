object BaseForm: TBaseForm
  Left = 10
  Top = 20
  Caption = 'Base'
  ClientHeight = 100
  ClientWidth = 200
  OnCreate = FormCreate
  object NameEdit: TEdit
    Left = 8
    Top = 8
    Width = 121
    Height = 21
    TabOrder = 0
    Text = 'base'
  end
  object CloseButton: TButton
    Left = 8
    Top = 40
    Width = 75
    Height = 25
    Caption = 'Close'
    TabOrder = 1
    OnClick = CloseClick
  end
end
