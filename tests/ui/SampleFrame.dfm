object SampleFrame: TSampleFrame
  Left = 0
  Top = 0
  Width = 160
  Height = 60
  TabOrder = 0
  object NameEdit: TEdit
    Left = 8
    Top = 8
    Width = 100
    Height = 21
    TabOrder = 0
    Text = 'as made'
  end
  object OkButton: TButton
    Left = 8
    Top = 32
    Width = 75
    Height = 25
    Caption = 'OK'
    TabOrder = 1
    OnClick = OkButtonClick
  end
end
