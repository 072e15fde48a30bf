object FilterForm: TFilterForm
  Left = 0
  Top = 0
  ClientWidth = 520
  ClientHeight = 36
  BorderStyle = bsNone
  Caption = 'Filter'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object FilterLabel: TLabel
    Left = 12
    Top = 12
    Width = 124
    Height = 13
    Caption = 'Show names &containing:'
    FocusControl = FilterEdit
  end
  object FilterEdit: TFilterEdit
    Left = 152
    Top = 8
    Width = 160
    Height = 21
    TabOrder = 0
    OnKeyPress = FilterEditKeyPress
  end
  object ShowButton: TButton
    Left = 320
    Top = 7
    Width = 64
    Height = 23
    Caption = 'S&how'
    TabOrder = 1
    OnClick = ShowButtonClick
  end
  object AllButton: TButton
    Left = 392
    Top = 7
    Width = 64
    Height = 23
    Caption = 'A&ll'
    TabOrder = 2
    OnClick = AllButtonClick
  end
end
