; The console's registers and the RAM that all samples share.

PPU_CTRL = $2000
PPU_MASK = $2001
PPU_STATUS = $2002
OAM_ADDR = $2003
PPU_SCROLL = $2005
PPU_ADDRESS = $2006
PPU_DATA = $2007
DMC_CTRL = $4010
OAM_DMA = $4014
APU_STATUS = $4015
JOY1 = $4016
APU_FRAME = $4017

; What a finished check leaves for a test or a curious reader:
;   $07F0  "PASS" or "FAIL"
;   $07F4  what failed: one of the FAULT values, 0 for nothing
;   $07F5  the bank, name table or page that failed
;   $07F6  the byte that was read there
;   $07F7  the sample's own number, SAMPLE_ID
Result = $07F0
Result_Fault = $07F4
Result_Bank = $07F5
Result_Read = $07F6
Result_Id = $07F7

FAULT_NONE = 0
FAULT_PRG = 1       ; a bank of 8 KB
FAULT_CHR = 2       ; a bank of 1 KB
FAULT_CHR_RAM = 3   ; a page of 256 bytes
FAULT_MIRRORING = 4 ; a name table, 0 to 3
FAULT_WORK_RAM = 5  ; a page of 256 bytes, $60 to $7F
FAULT_COUNTER = 6   ; the scanline counter

; Name table arrangements
MIRROR_HORIZONTAL = 0
MIRROR_VERTICAL = 1
MIRROR_SINGLE = 2

 .RSSET $0010
Ptr_L .RS 1
Ptr_H .RS 1
Step .RS 1          ; counts banks and windows
Expected .RS 1      ; number that a bank should carry
Fault .RS 1         ; what is being tested
Fault_First .RS 1   ; first fault found, and where
Fault_Bank .RS 1
Fault_Read .RS 1
Window_H .RS 1      ; where the mapper shows the bank
Pattern .RS 1
Count .RS 1
Line .RS 1
Tested .RS 1        ; bit n: fault n was looked for
Failed .RS 1        ; bit n: fault n was found
Frame .RS 1         ; counted by the NMI
Own_Ram .RS 0       ; a sample's own variables start here

Buffer = $0180      ; 32 bytes far from the end of the stack that is in use
Sprites = $0200
Prg_Results = $0300 ; a byte per PRG bank, 0 for good
Chr_Results = $0400 ; a byte per CHR bank
