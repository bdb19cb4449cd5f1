namespace LCD::FactoryModeImpl { }
