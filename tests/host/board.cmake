# The board: tests of its parts on mock devices. Their names contain "board".

# lcd_add_board_test(<name>): a test in board/<name>.cpp.
function(lcd_add_board_test name)
    lcd_add_test(${name} SOURCES board/${name}.cpp LIBRARIES panelhost_base LABELS board)
endfunction()

lcd_add_board_test(tst_boardeventloop)
