#include "frame/DetailBoxes.h"

#include "core/mod_of_grobal_var.h"
#include "frame/MainControls.h"

DetailBoxes::DetailBoxes(const MainControls& controls) : controls_(controls)
{
    shared.detail_fields = this;
}

DetailBoxes::~DetailBoxes()
{
    shared.detail_fields = nullptr;
}

void DetailBoxes::set_txtFilename(const QString& text)
{
    controls_.txtFilename->set_Text(text);
}

void DetailBoxes::set_txtArtist(const QString& text)
{
    controls_.txtArtist->set_Text(text);
}

void DetailBoxes::set_txtTitle(const QString& text)
{
    controls_.txtTitle->set_Text(text);
}

void DetailBoxes::set_txtGenre(const QString& text)
{
    controls_.txtGenre->set_Text(text);
}

QString DetailBoxes::txtGenre() const
{
    return controls_.txtGenre->Text();
}

void DetailBoxes::set_Label_filesize(const QString& text)
{
    controls_.Label_filesize->set_Text(text);
}

GenreBox& DetailBoxes::cboGenre()
{
    return *controls_.cboGenre;
}
