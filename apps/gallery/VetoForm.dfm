object VetoForm: TVetoForm
  Left = 0
  Top = 0
  ClientWidth = 600
  ClientHeight = 156
  BorderStyle = bsNone
  Caption = 'Vetoes'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object RefuseLabel: TLabel
    Left = 12
    Top = 12
    Width = 120
    Height = 13
    Caption = 'Refuse'
    Font.Height = -11
    Font.Name = 'MS Shell Dlg 2'
    Font.Style = [fsBold]
    ParentFont = False
  end
  object UpLevelBox: TCheckBox
    Left = 12
    Top = 32
    Width = 130
    Height = 17
    Caption = '&Up one level'
    TabOrder = 0
  end
  object DesktopBox: TCheckBox
    Left = 12
    Top = 55
    Width = 130
    Height = 17
    Caption = '&Desktop'
    TabOrder = 1
  end
  object LastFolderBox: TCheckBox
    Left = 12
    Top = 78
    Width = 130
    Height = 17
    Caption = '&Back'
    TabOrder = 2
  end
  object NewFolderBox: TCheckBox
    Left = 12
    Top = 101
    Width = 130
    Height = 17
    Caption = 'Ne&w folder'
    TabOrder = 3
  end
  object StyleBox: TCheckBox
    Left = 12
    Top = 124
    Width = 130
    Height = 17
    Caption = '&A different view'
    TabOrder = 4
  end
  object NameBox: TCheckBox
    Left = 148
    Top = 32
    Width = 130
    Height = 17
    Caption = '&Entering a name'
    TabOrder = 5
  end
  object CloseBox: TCheckBox
    Left = 148
    Top = 55
    Width = 130
    Height = 17
    Caption = '&Closing with OK'
    TabOrder = 6
  end
  object MoveBox: TCheckBox
    Left = 148
    Top = 78
    Width = 130
    Height = 17
    Caption = '&Moving the dialog'
    TabOrder = 7
  end
  object TabBox: TCheckBox
    Left = 148
    Top = 101
    Width = 130
    Height = 17
    Caption = 'Another &tab'
    TabOrder = 8
  end
  object LogPanel: TPanel
    Left = 288
    Top = 0
    Width = 312
    Height = 156
    Anchors = [akLeft, akTop, akRight, akBottom]
    BevelOuter = bvNone
    Caption = ''
    TabOrder = 9
  end
end
