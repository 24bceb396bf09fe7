#include "gchoicebox.h"

GChoiceBox::GChoiceBox(GWnd* parent, int id, const char* classe)
    : GControl(parent, id, {TTipoElemento::combo}, classe)
{
}

int GChoiceBox::addString(const char* text) { return finestra->AggiungiVoce(indice, text ? text : ""); }

int GChoiceBox::setItemData(int index, std::intptr_t value) { return finestra->ImpostaDato(indice, index, value); }

std::intptr_t GChoiceBox::getItemData(int index) const { return finestra->Dato(indice, index); }

int GChoiceBox::getCount() const { return finestra->NumVoci(indice); }

int GChoiceBox::getSelIndex() const { return finestra->Selezione(indice); }

int GChoiceBox::setSelIndex(int index) { return finestra->ImpostaSelezione(indice, index); }

GComboBox::GComboBox(GWnd* parent, int id, int, int, int) : GChoiceBox(parent, id, "GComboBox") {}
