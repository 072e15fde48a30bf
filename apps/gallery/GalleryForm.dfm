object GalleryForm: TGalleryForm
  Left = 0
  Top = 0
  ClientWidth = 1000
  ClientHeight = 700
  BorderStyle = bsSizeable
  Caption = 'Gallery'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  Constraints.MinHeight = 640
  Constraints.MinWidth = 960
  Position = poScreenCenter
  object NavigationPanel: TPanel
    Left = 0
    Top = 0
    Width = 208
    Height = 700
    Align = alLeft
    BevelOuter = bvNone
    Color = clWindow
    ParentColor = False
    TabOrder = 0
    object ProgramLabel: TLabel
      Left = 16
      Top = 20
      Width = 176
      Height = 23
      Caption = 'Gallery'
      Font.Height = -19
      Font.Name = 'MS Shell Dlg 2'
      Font.Style = []
      ParentFont = False
    end
    object PageList: TPageList
      Left = 0
      Top = 64
      Width = 208
      Height = 636
      Anchors = [akLeft, akTop, akRight, akBottom]
      TabOrder = 0
      OnChange = PageListChange
    end
  end
  object ClientPanel: TPanel
    Left = 208
    Top = 0
    Width = 792
    Height = 700
    Align = alClient
    BevelOuter = bvNone
    TabOrder = 1
    object HeaderPanel: TPanel
      Left = 0
      Top = 0
      Width = 792
      Height = 64
      Align = alTop
      BevelOuter = bvNone
      TabOrder = 0
      object TitleLabel: TLabel
        Left = 16
        Top = 16
        Width = 400
        Height = 19
        Caption = ''
        Font.Height = -16
        Font.Name = 'MS Shell Dlg 2'
        Font.Style = [fsBold]
        ParentFont = False
      end
      object HintLabel: TLabel
        Left = 16
        Top = 40
        Width = 700
        Height = 13
        Caption = ''
      end
    end
    object PagePanel: TPanel
      Left = 0
      Top = 64
      Width = 792
      Height = 376
      Align = alTop
      BevelOuter = bvNone
      TabOrder = 1
    end
    object OutputPanel: TPanel
      Left = 0
      Top = 440
      Width = 792
      Height = 260
      Align = alClient
      BevelOuter = bvNone
      TabOrder = 2
      object OutputLabel: TLabel
        Left = 16
        Top = 4
        Width = 120
        Height = 13
        Caption = '&What came back:'
        FocusControl = OutputMemo
      end
      object OutputMemo: TMemo
        Left = 16
        Top = 22
        Width = 760
        Height = 222
        Anchors = [akLeft, akTop, akRight, akBottom]
        ReadOnly = True
        ScrollBars = ssVertical
        TabOrder = 0
      end
    end
  end
end
