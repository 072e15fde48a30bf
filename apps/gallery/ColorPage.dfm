object ColorPage: TColorPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Color dialog'
  Hint = 
    'The program hears of every colour that the user makes, and may p' +
    'ut another one into its place.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object ColorGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 272
    Height = 104
    Caption = 'Colour'
    TabOrder = 0
    object SwatchPanel: TPanel
      Left = 16
      Top = 24
      Width = 240
      Height = 64
      BevelOuter = bvLowered
      Caption = ''
      Color = clTeal
      ParentColor = False
      TabOrder = 0
    end
  end
  object TextsGroup: TGroupBox
    Left = 16
    Top = 132
    Width = 272
    Height = 116
    Caption = 'Texts'
    TabOrder = 1
    object TitleLabel: TLabel
      Left = 16
      Top = 28
      Width = 72
      Height = 13
      Caption = '&Title:'
      FocusControl = TitleEdit
    end
    object TitleEdit: TEdit
      Left = 112
      Top = 24
      Width = 144
      Height = 21
      TabOrder = 0
      Text = 'Colour of the walls'
    end
    object DefineLabel: TLabel
      Left = 16
      Top = 55
      Width = 72
      Height = 13
      Caption = '&Define button:'
      FocusControl = DefineEdit
    end
    object DefineEdit: TEdit
      Left = 112
      Top = 51
      Width = 144
      Height = 21
      TabOrder = 1
      Text = '&Mix a colour >>'
    end
    object AddLabel: TLabel
      Left = 16
      Top = 82
      Width = 72
      Height = 13
      Caption = '&Add button:'
      FocusControl = AddEdit
    end
    object AddEdit: TEdit
      Left = 112
      Top = 78
      Width = 144
      Height = 21
      TabOrder = 2
      Text = '&Keep this one'
    end
  end
  object PartsGroup: TGroupBox
    Left = 300
    Top = 16
    Width = 268
    Height = 128
    Caption = 'Parts'
    TabOrder = 2
    object FullBox: TCheckBox
      Left = 16
      Top = 24
      Width = 236
      Height = 17
      Caption = '&Full from the start'
      TabOrder = 0
    end
    object PreventBox: TCheckBox
      Left = 16
      Top = 47
      Width = 236
      Height = 17
      Caption = '&Never full'
      TabOrder = 1
    end
    object EventsBox: TCheckBox
      Left = 16
      Top = 70
      Width = 236
      Height = 17
      Caption = '&Bottom: events, and vetoes'
      Checked = True
      State = cbChecked
      TabOrder = 2
    end
    object GrayBox: TCheckBox
      Left = 16
      Top = 93
      Width = 236
      Height = 17
      Caption = '&Grey in the place of what the user mixes'
      Checked = True
      State = cbChecked
      TabOrder = 3
    end
  end
  object ChooseButton: TButton
    Left = 16
    Top = 268
    Width = 96
    Height = 25
    Caption = '&Choose...'
    Default = True
    TabOrder = 3
    OnClick = ChooseButtonClick
  end
  object Dialog: TKxColorDialog
    CustDlgParams.Position = dpMainFormCenter
  end
end
