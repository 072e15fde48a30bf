object EventLogForm: TEventLogForm
  Left = 0
  Top = 0
  ClientWidth = 280
  ClientHeight = 320
  BorderStyle = bsNone
  Caption = 'Events'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object HeadingLabel: TLabel
    Left = 4
    Top = 12
    Width = 200
    Height = 13
    Caption = 'E&vents'
    FocusControl = EventList
    Font.Height = -11
    Font.Name = 'MS Shell Dlg 2'
    Font.Style = [fsBold]
    ParentFont = False
  end
  object EventList: TListBox
    Left = 4
    Top = 32
    Width = 264
    Height = 240
    Anchors = [akLeft, akTop, akRight, akBottom]
    TabOrder = 0
  end
  object ClearButton: TButton
    Left = 172
    Top = 284
    Width = 96
    Height = 25
    Anchors = [akRight, akBottom]
    Caption = 'C&lear'
    TabOrder = 1
    OnClick = ClearButtonClick
  end
end
