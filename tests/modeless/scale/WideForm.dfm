object WideForm: TWideForm
  Left = 0
  Top = 0
  ClientWidth = 300
  ClientHeight = 104
  BorderStyle = bsNone
  Caption = 'Wide'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object Bar: TToolBar
    Left = 0
    Top = 0
    Width = 300
    Height = 24
    AutoSize = True
    ButtonHeight = 22
    ButtonWidth = 23
    Flat = True
    TabOrder = 0
    object ZoomTool: TToolButton
      Left = 0
      Top = 0
      Caption = 'Zoom'
      ImageIndex = 0
    end
    object TurnTool: TToolButton
      Left = 23
      Top = 0
      Caption = 'Turn'
      ImageIndex = 1
    end
  end
  object LayerList: TListView
    Left = 8
    Top = 30
    Width = 172
    Height = 68
    Anchors = [akLeft, akTop, akBottom]
    Columns = <
      item
        Caption = 'Layer'
        Width = 90
      end
      item
        Caption = 'Thickness'
        Width = 74
      end>
    ReadOnly = True
    TabOrder = 1
    ViewStyle = vsReport
  end
  object NoteMemo: TMemo
    Left = 188
    Top = 30
    Width = 104
    Height = 68
    Anchors = [akLeft, akTop, akRight, akBottom]
    Lines.Strings = (
      'Checked by'
      'the surveyor.')
    TabOrder = 2
  end
end
