object FrameHostForm: TFrameHostForm
  Left = 0
  Top = 0
  ClientHeight = 200
  ClientWidth = 300
  PixelsPerInch = 96
  inline First: TSampleFrame
    Left = 10
    Top = 20
    Width = 160
    Height = 60
    TabOrder = 0
    inherited NameEdit: TEdit
      Text = 'of the form'
    end
    inherited OkButton: TButton
      OnClick = FirstOkButtonClick
    end
  end
  inline Second: TSampleFrame
    Left = 10
    Top = 100
    Width = 160
    Height = 60
    TabOrder = 1
  end
end
