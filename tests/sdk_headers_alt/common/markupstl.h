/* CMarkupSTL as another SDK lays it out (tests/sdk_headers_alt): the same public
 * methods, a different private state.
 *
 * The SDK's XML cursor over one document.
 *
 * Three positions: the parent level, the main (current) element at that level, and
 * nothing below it until IntoElem(). A text that is not one well-formed XML document is
 * kept raw (GetDoc() returns it unchanged), which is how JSON bodies travel through the
 * XML path. No method throws; calls without a main element return false or "". */
#ifndef NOLTDEV_MARKUPSTL_H
#define NOLTDEV_MARKUPSTL_H

#include <string>

class CMarkupSTL {
  public:
    CMarkupSTL();
    explicit CMarkupSTL(const char *text);
    ~CMarkupSTL();

    /* Parses text; false (and the raw text kept) when it is not well-formed XML.
     * Resets the position to the document level. */
    bool SetDoc(const char *text);
    /* The document as text: raw when it did not parse, otherwise printed without
     * indentation, the declaration kept. */
    std::string GetDoc() const;
    bool IsWellFormed() const;

    /* restart false: siblings after the main element (from the first when there is
     * none); restart true: the current level from its first element. NULL or "" matches
     * any element. Found: it becomes the main element. */
    bool FindElem(const char *name = NULL, bool restart = false);
    bool IntoElem();
    bool OutOfElem();
    void ResetPos();

    /* Adds an element after the main element, or at the end of the level when there is
     * none, and makes it the main element. */
    bool AddElem(const char *name, const char *data = "");
    bool AddElem(const char *name, int data);

    std::string GetTagName() const;
    std::string GetData() const;
    bool SetData(const char *text);
    bool SetData(int value);
    std::string GetAttrib(const char *name) const;
    bool SetAttrib(const char *name, const char *value);
    bool SetAttrib(const char *name, int value);

  private:
    CMarkupSTL(const CMarkupSTL &);
    CMarkupSTL &operator=(const CMarkupSTL &);
    /* another implementation's state, held inline: the text and element positions */
    std::string m_strDoc;
    std::string m_strError;
    int m_iPosParent;
    int m_iPos;
    int m_iPosChild;
    int m_iPosFree;
    int m_nNodeType;
    struct ElemPos {
        int nStartL, nStartR, nEndL, nEndR, nReserved;
        int iElemParent, iElemChild, iElemNext;
    } m_aPos[16];
};

#endif
