' cscript walk_and_table.vbs walk|tuned|table RESULT-FILE
'
' What a user would otherwise run: a macro that walks the active product into the same structure text
' ("walk" as such macros are usually written, "tuned" with one Products reference per level), or
' writes a table for 22 parts into the active drawing as the program does ("table"). Leaves the
' seconds that it took, without the script host's start, and the number of instances or cells in the
' result file.
Option Explicit

Const kParts = 22
Const kFreeRows = 5

Dim structure, assemblies, done

Sub Add(line)
    structure = structure & vbCrLf & line
    done = done + 1
End Sub

Sub Walk(product, depth, path)
    Dim i, child
    assemblies = assemblies + 1
    For i = 1 To product.Products.Count
        Set child = product.Products.Item(i)
        If child.Products.Count = 0 Then
            Add depth & vbTab & child.PartNumber & vbTab & path
        Else
            Dim below
            below = path & "|||||" & child.PartNumber & "*" & assemblies & "*"
            Add depth & vbTab & child.PartNumber & vbTab & path & vbTab & below
            Walk child, depth + 1, below
        End If
    Next
End Sub

Sub TunedWalk(children, count, depth, path)
    Dim i, child, number, grandchildren, grandchildCount, below
    assemblies = assemblies + 1
    For i = 1 To count
        Set child = children.Item(i)
        number = child.PartNumber
        Set grandchildren = child.Products
        grandchildCount = grandchildren.Count
        If grandchildCount = 0 Then
            Add depth & vbTab & number & vbTab & path
        Else
            below = path & "|||||" & number & "*" & assemblies & "*"
            Add depth & vbTab & number & vbTab & path & vbTab & below
            TunedWalk grandchildren, grandchildCount, depth + 1, below
        End If
    Next
End Sub

Sub WriteTable(document)
    Dim table, rows, row, column, part, cell, widths, headers, selection
    widths = Array(13.88, 43.67, 15.76, 37.51, 34.61, 31.53, 14.68)
    headers = Array("Pozice", "nazev", "Kusu", "Ciste rozmery", "Material", "Poznamka", "List")
    rows = kParts + 1 + kFreeRows
    Set table = document.Sheets.ActiveSheet.Views.ActiveView.Tables.Add(100, 100, rows, 7, 6.8, 20)
    table.SetRowSize 1, 4.9
    For column = 1 To 7
        table.SetColumnSize column, widths(column - 1)
    Next
    For row = 1 To rows
        For column = 1 To 7
            Set cell = table.GetCellObject(row, column)
            If row = 1 Then
                cell.SetFontSize 0, 0, 2.5
            Else
                cell.SetFontSize 0, 0, 3
            End If
        Next
    Next
    For column = 1 To 7
        table.SetCellString 1, column, headers(column - 1)
    Next
    For row = rows To kFreeRows + 2 Step -1
        part = rows + 1 - row
        For column = 1 To 7
            table.SetCellString row, column, "part " & part
            done = done + 1
        Next
    Next
    Set selection = document.Selection
    selection.Add table
    selection.VisProperties.SetRealWidth 2, 1
End Sub

Dim catia, document, start, seconds, file, children
start = Timer
Set catia = CreateObject("CATIA.Application")
Set document = catia.ActiveDocument
Select Case WScript.Arguments(0)
Case "walk"
    Walk document.Product, 1, document.Product.PartNumber
Case "tuned"
    Set children = document.Product.Products
    TunedWalk children, children.Count, 1, document.Product.PartNumber
Case "table"
    WriteTable document
End Select
seconds = Timer - start

Set file = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(1), True)
file.WriteLine CLng(seconds * 1000) & " " & done
file.Close
