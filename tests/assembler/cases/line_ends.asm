; CR LF ends lines, a tab is a blank, the last line has no end.
	.ORG	$8000
A1:	LDA	#1	; one

	.STR "A;B" ; 
	.DB 2