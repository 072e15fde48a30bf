object PrintPage: TPrintPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Print dialog'
  Hint = 
    'A form beside the choice of the printer; the printer, its proper' +
    'ties and the copies are told.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object PartsGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 272
    Height = 104
    Caption = 'What can be printed'
    TabOrder = 0
    object PagesBox: TCheckBox
      Left = 16
      Top = 24
      Width = 240
      Height = 17
      Caption = 'A &range of pages'
      Checked = True
      State = cbChecked
      TabOrder = 0
    end
    object SelectionBox: TCheckBox
      Left = 16
      Top = 47
      Width = 240
      Height = 17
      Caption = 'The &selection'
      TabOrder = 1
    end
    object FileBox: TCheckBox
      Left = 16
      Top = 70
      Width = 240
      Height = 17
      Caption = 'Into a &file'
      Checked = True
      State = cbChecked
      TabOrder = 2
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
      Text = 'Print the drawing'
    end
    object OkLabel: TLabel
      Left = 16
      Top = 55
      Width = 72
      Height = 13
      Caption = 'O&K button:'
      FocusControl = OkEdit
    end
    object OkEdit: TEdit
      Left = 112
      Top = 51
      Width = 144
      Height = 21
      TabOrder = 1
      Text = '&Print'
    end
    object CaptionsBox: TCheckBox
      Left = 16
      Top = 84
      Width = 240
      Height = 17
      Caption = '&Groups and buttons in other words'
      Checked = True
      State = cbChecked
      TabOrder = 2
    end
  end
  object FormsGroup: TGroupBox
    Left = 300
    Top = 16
    Width = 268
    Height = 61
    Caption = 'Docked form'
    TabOrder = 2
    object SideLabel: TLabel
      Left = 16
      Top = 28
      Width = 72
      Height = 13
      Caption = '&Events:'
      FocusControl = SideCombo
    end
    object SideCombo: TComboBox
      Left = 96
      Top = 24
      Width = 156
      Height = 21
      Style = csDropDownList
      Items.Strings = (
        'None'
        'On the left'
        'On top'
        'On the right'
        'At the bottom')
      ItemIndex = 3
      TabOrder = 0
    end
  end
  object PrintButton: TButton
    Left = 16
    Top = 268
    Width = 96
    Height = 25
    Caption = '&Print...'
    Default = True
    TabOrder = 3
    OnClick = PrintButtonClick
  end
  object Dialog: TKxPrintDialog
    Copies = 1
    FromPage = 1
    MinPage = 1
    MaxPage = 12
    ToPage = 12
    CustDlgParams.Position = dpMainFormCenter
  end
end
