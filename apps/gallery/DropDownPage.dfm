object DropDownPage: TDropDownPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Drop-down buttons'
  Hint = 
    'A press on the arrow opens a menu, a press on the rest is that o' +
    'f an ordinary button.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object StatesGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 352
    Height = 208
    Caption = 'States'
    TabOrder = 0
    object PlainButton: TKxBitBtn
      Left = 16
      Top = 26
      Width = 120
      Height = 27
      Caption = '&Open'
      TabOrder = 0
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
    end
    object PlainLabel: TLabel
      Left = 152
      Top = 33
      Width = 200
      Height = 13
      Caption = 'With a menu'
    end
    object DefaultButton: TKxBitBtn
      Left = 16
      Top = 62
      Width = 120
      Height = 27
      Caption = '&Save'
      TabOrder = 1
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
      Default = True
    end
    object DefaultLabel: TLabel
      Left = 152
      Top = 69
      Width = 200
      Height = 13
      Caption = 'The default: Return presses it'
    end
    object DisabledButton: TKxBitBtn
      Left = 16
      Top = 98
      Width = 120
      Height = 27
      Caption = '&Print'
      TabOrder = 2
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
      Enabled = False
    end
    object DisabledLabel: TLabel
      Left = 152
      Top = 105
      Width = 200
      Height = 13
      Caption = 'Disabled'
    end
    object NoMenuButton: TKxBitBtn
      Left = 16
      Top = 134
      Width = 120
      Height = 27
      Caption = 'S&earch'
      TabOrder = 3
      OnClick = ButtonClick
    end
    object NoMenuLabel: TLabel
      Left = 152
      Top = 141
      Width = 200
      Height = 13
      Caption = 'Without a menu'
    end
    object EnabledBox: TCheckBox
      Left = 16
      Top = 174
      Width = 320
      Height = 17
      Caption = 'E&nable the disabled ones'
      TabOrder = 4
      OnClick = EnabledBoxClick
    end
  end
  object CaptionsGroup: TGroupBox
    Left = 380
    Top = 16
    Width = 396
    Height = 168
    Caption = 'Captions'
    TabOrder = 1
    object ShortButton: TKxBitBtn
      Left = 16
      Top = 26
      Width = 48
      Height = 27
      Caption = '&Go'
      TabOrder = 0
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
    end
    object LongButton: TKxBitBtn
      Left = 80
      Top = 26
      Width = 298
      Height = 27
      Caption = 'Open with the program that &was used last'
      TabOrder = 1
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
    end
    object LeftButton: TKxBitBtn
      Left = 16
      Top = 64
      Width = 176
      Height = 27
      Caption = 'At the &left edge'
      TabOrder = 2
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
      Margin = 8
    end
    object WideButton: TKxBitBtn
      Left = 202
      Top = 64
      Width = 176
      Height = 27
      Caption = 'A &roomy arrow'
      TabOrder = 3
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
      Spacing = 12
    end
    object TallButton: TKxBitBtn
      Left = 16
      Top = 104
      Width = 362
      Height = 44
      Caption = 'As &tall as one likes'
      TabOrder = 4
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
      Font.Height = -16
      Font.Name = 'MS Shell Dlg 2'
      ParentFont = False
    end
  end
  object GlyphsGroup: TGroupBox
    Left = 380
    Top = 196
    Width = 396
    Height = 108
    Caption = 'A picture for each state'
    TabOrder = 2
    object FourButton: TKxBitBtn
      Left = 16
      Top = 26
      Width = 120
      Height = 27
      Caption = '&Colourful'
      TabOrder = 0
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
      NumGlyphs = 4
      Glyph.Data = {
        96010000424D96010000000000007600000028000000300000000C0000000100
        04000000000020010000130B0000130B00001000000000000000FF00FF00467D
        2E00B4B4B4002B82D900B66F3B00000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000004400000
        0000022000000000033000000000011000000000444400000000222200000000
        3333000000001111000000044444400000022222200000033333300000011111
        1000004444444400002222222200003333333300001111111100004444444400
        0022222222000033333333000011111111000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000}
    end
    object FourLabel: TLabel
      Left = 152
      Top = 33
      Width = 220
      Height = 13
      Caption = 'Pictures for up, disabled, down and held'
    end
    object FourDisabledButton: TKxBitBtn
      Left = 16
      Top = 64
      Width = 120
      Height = 27
      Caption = 'Colour&less'
      TabOrder = 1
      OnClick = ButtonClick
      DropDownMenu = OpenMenu
      NumGlyphs = 4
      Enabled = False
      Glyph.Data = {
        96010000424D96010000000000007600000028000000300000000C0000000100
        04000000000020010000130B0000130B00001000000000000000FF00FF00467D
        2E00B4B4B4002B82D900B66F3B00000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000004400000
        0000022000000000033000000000011000000000444400000000222200000000
        3333000000001111000000044444400000022222200000033333300000011111
        1000004444444400002222222200003333333300001111111100004444444400
        0022222222000033333333000011111111000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000000000000000
        0000000000000000000000000000000000000000000000000000}
    end
    object FourDisabledLabel: TLabel
      Left = 152
      Top = 71
      Width = 220
      Height = 13
      Caption = 'Disabled'
    end
  end
  object OpenMenu: TPopupMenu
    object OpenItem: TMenuItem
      Caption = '&Open'
      OnClick = MenuItemClick
    end
    object ReadOnlyItem: TMenuItem
      Caption = 'Open &read-only'
      OnClick = MenuItemClick
    end
    object LineItem: TMenuItem
      Caption = '-'
    end
    object CopyItem: TMenuItem
      Caption = 'Open a &copy'
      OnClick = MenuItemClick
    end
  end
end
