inherited DerivedForm: TDerivedForm
  Caption = 'Derived'
  ClientWidth = 300
  inherited NameEdit: TEdit
    Width = 200
    Text = 'derived'
  end
  object Extra: TCheckBox
    Left = 100
    Top = 40
    Width = 97
    Height = 17
    Caption = 'Extra'
    TabOrder = 2
  end
end
