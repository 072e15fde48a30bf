object FolderPage: TFolderPage
  Left = 0
  Top = 0
  ClientWidth = 792
  ClientHeight = 376
  BorderStyle = bsNone
  Caption = 'Folder dialog'
  Hint = 
    'The shell browses for a folder; forms stand beside its tree or i' +
    'n place of it.'
  Font.Height = -11
  Font.Name = 'MS Shell Dlg 2'
  object TextsGroup: TGroupBox
    Left = 16
    Top = 16
    Width = 372
    Height = 168
    Caption = 'Texts'
    TabOrder = 0
    object TitleLabel: TLabel
      Left = 16
      Top = 28
      Width = 88
      Height = 13
      Caption = '&Title:'
      FocusControl = TitleEdit
    end
    object TitleEdit: TEdit
      Left = 104
      Top = 24
      Width = 252
      Height = 21
      TabOrder = 0
      Text = 'Where to keep the copies?'
    end
    object TextLabel: TLabel
      Left = 16
      Top = 55
      Width = 88
      Height = 13
      Caption = 'Te&xt:'
      FocusControl = TextEdit
    end
    object TextEdit: TEdit
      Left = 104
      Top = 51
      Width = 252
      Height = 21
      TabOrder = 1
      Text = 'Choose the folder for the copies.'
    end
    object StatusLabel: TLabel
      Left = 16
      Top = 82
      Width = 88
      Height = 13
      Caption = '&Status:'
      FocusControl = StatusEdit
    end
    object StatusEdit: TEdit
      Left = 104
      Top = 78
      Width = 252
      Height = 21
      TabOrder = 2
      Text = 'Nothing is chosen yet.'
    end
    object OkLabel: TLabel
      Left = 16
      Top = 109
      Width = 88
      Height = 13
      Caption = '&OK:'
      FocusControl = OkEdit
    end
    object OkEdit: TEdit
      Left = 104
      Top = 105
      Width = 252
      Height = 21
      TabOrder = 3
      Text = '&Take it'
    end
    object CancelLabel: TLabel
      Left = 16
      Top = 136
      Width = 88
      Height = 13
      Caption = '&Cancel:'
      FocusControl = CancelEdit
    end
    object CancelEdit: TEdit
      Left = 104
      Top = 132
      Width = 252
      Height = 21
      TabOrder = 4
      Text = '&Leave'
    end
  end
  object BrowserGroup: TGroupBox
    Left = 404
    Top = 16
    Width = 372
    Height = 168
    Anchors = [akLeft, akTop, akRight]
    Caption = 'Browser'
    TabOrder = 1
    object RootLabel: TLabel
      Left = 16
      Top = 28
      Width = 88
      Height = 13
      Caption = '&Root of the tree:'
      FocusControl = RootCombo
    end
    object RootCombo: TComboBox
      Left = 124
      Top = 24
      Width = 232
      Height = 21
      Anchors = [akLeft, akTop, akRight]
      Style = csDropDownList
      Items.Strings = (
        'The folder of the samples'
        'The desktop'
        'The computer'
        'My documents')
      ItemIndex = 0
      TabOrder = 0
    end
    object DisksBox: TCheckBox
      Left = 16
      Top = 56
      Width = 340
      Height = 17
      Caption = 'Only folders of the &disk can be chosen'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
    object FilesBox: TCheckBox
      Left = 16
      Top = 79
      Width = 340
      Height = 17
      Caption = 'Sho&w files too'
      TabOrder = 2
    end
    object NewStyleBox: TCheckBox
      Left = 16
      Top = 102
      Width = 340
      Height = 17
      Caption = '&New style: can be sized, makes folders'
      TabOrder = 3
    end
    object NameBox: TCheckBox
      Left = 16
      Top = 125
      Width = 340
      Height = 17
      Caption = 'N&ame edit, in the new style'
      TabOrder = 4
    end
  end
  object FormsGroup: TGroupBox
    Left = 16
    Top = 196
    Width = 760
    Height = 100
    Anchors = [akLeft, akTop, akRight]
    Caption = 'Forms'
    TabOrder = 2
    object EventsBox: TCheckBox
      Left = 16
      Top = 24
      Width = 340
      Height = 17
      Caption = 'R&ight: events as they happen'
      Checked = True
      State = cbChecked
      TabOrder = 0
    end
    object VetoesBox: TCheckBox
      Left = 16
      Top = 47
      Width = 340
      Height = 17
      Caption = '&Bottom: vetoes'
      Checked = True
      State = cbChecked
      TabOrder = 1
    end
    object ChoiceBox: TCheckBox
      Left = 16
      Top = 70
      Width = 340
      Height = 17
      Caption = 'A &list in place of the tree'
      TabOrder = 2
    end
    object NoteLabel: TLabel
      Left = 404
      Top = 25
      Width = 340
      Height = 40
      Caption = 
        'With files, the new style or the name edit nothing is docked: th' +
        'at browser arranges its controls by itself.'
      AutoSize = False
      WordWrap = True
    end
  end
  object BrowseButton: TButton
    Left = 16
    Top = 312
    Width = 96
    Height = 25
    Caption = 'Brows&e...'
    Default = True
    TabOrder = 3
    OnClick = BrowseButtonClick
  end
  object Dialog: TKxFolderDialog
    CustDlgParams.Position = dpMainFormCenter
    OnSelectionChange = DialogSelectionChange
    OnCanClose = DialogCanClose
    OnEventHooking = DialogEventHooking
  end
end
