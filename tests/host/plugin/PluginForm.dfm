object PluginForm: TPluginForm
  Left = 0
  Top = 0
  ClientWidth = 140
  ClientHeight = 120
  BorderStyle = bsNone
  Caption = 'Plugin'
  object Label1: TLabel
    Left = 8
    Top = 8
    Width = 100
    Height = 13
    Caption = 'Of the library'
  end
  object Edit1: TEdit
    Left = 8
    Top = 30
    Width = 100
    Height = 21
    TabOrder = 0
  end
end
